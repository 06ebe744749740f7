#include "core/settings/SettingsPane.hpp"

#include "core/app/CommandLine.hpp"

#include <algorithm>

namespace quillet {

namespace {

struct PaneInfo {
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
    Tint tint;
};

const PaneInfo& info(SettingsPane pane) {
    static constexpr std::array<PaneInfo, 3> panes{{
        {"general", "General", "gearshape.fill", Tint::gray},
        {"items", "Menu Bar Items", "menubar.rectangle", Tint::indigo},
        {"permissions", "Permissions", "lock.shield.fill", Tint::orange},
    }};
    return panes[static_cast<std::size_t>(pane)];
}

} // namespace

std::string_view rawValue(SettingsPane pane) {
    return info(pane).rawValue;
}

std::optional<SettingsPane> settingsPane(std::string_view raw) {
    for (SettingsPane pane : allSettingsPanes) {
        if (rawValue(pane) == raw) {
            return pane;
        }
    }
    return std::nullopt;
}

std::string_view title(SettingsPane pane) {
    return info(pane).title;
}

std::string_view symbol(SettingsPane pane) {
    return info(pane).symbol;
}

Tint tint(SettingsPane pane) {
    return info(pane).tint;
}

SettingsPane initialPane(const std::vector<std::string>& arguments) {
    auto tab = std::find_if(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.starts_with(CommandLine::kTab);
    });
    if (tab == arguments.end()) {
        return SettingsPane::general;
    }
    return settingsPane(std::string_view(*tab).substr(CommandLine::kTab.size()))
        .value_or(SettingsPane::general);
}

} // namespace quillet
