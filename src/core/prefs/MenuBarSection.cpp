#include "core/prefs/MenuBarSection.hpp"

#include <cstddef>

namespace quillet {

namespace {

// Indexed by the section's order.
constexpr std::array<std::string_view, 4> kRawValues{"visible", "hidden", "alwaysHidden",
                                                     "dynamic"};
constexpr std::array<std::string_view, 4> kShortLabels{"Show", "Hide", "Always", "Auto"};

std::size_t order(MenuBarSection section) {
    return static_cast<std::size_t>(section);
}

} // namespace

std::string_view rawValue(MenuBarSection section) {
    return kRawValues[order(section)];
}

std::string_view shortLabel(MenuBarSection section) {
    return kShortLabels[order(section)];
}

std::optional<MenuBarSection> menuBarSection(std::string_view rawValue) {
    for (MenuBarSection section : allMenuBarSections) {
        if (kRawValues[order(section)] == rawValue) {
            return section;
        }
    }
    return std::nullopt;
}

} // namespace quillet
