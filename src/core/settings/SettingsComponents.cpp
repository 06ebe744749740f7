#include "core/settings/SettingsComponents.hpp"

#include <algorithm>

namespace quillet {

std::int64_t SettingsStepper::shownValue() const {
    return std::clamp(value, minimum, maximum);
}

std::int64_t SettingsStepper::stepped(int direction) const {
    const std::int64_t shown = shownValue();
    return std::clamp(direction > 0 ? shown + step : shown - step, minimum, maximum);
}

SettingsButton SettingsButton::titled(std::string title, std::function<void()> action) {
    SettingsButton button;
    button.title = std::move(title);
    button.action = std::move(action);
    return button;
}

SettingsButton SettingsButton::symbolic(std::string symbol, Style style, std::string toolTip,
                                        std::function<void()> action) {
    SettingsButton button;
    button.symbol = std::move(symbol);
    button.style = style;
    button.toolTip = std::move(toolTip);
    button.action = std::move(action);
    return button;
}

SettingsRow SettingsToggleRow::row() const {
    return {icon, iconTint, title, subtitle, {0, {SettingsSwitch{isOn, setOn}}}};
}

SettingsRow SettingsItemRow::row() const {
    return {"", Tint::secondary, title, subtitle, trailing};
}

std::string_view SettingsBanner::symbol(Kind kind) {
    switch (kind) {
    case Kind::success:
        return "checkmark.shield.fill";
    case Kind::warning:
        return "exclamationmark.triangle.fill";
    case Kind::info:
        break;
    }
    return "info.circle.fill";
}

Tint SettingsBanner::tint(Kind kind) {
    switch (kind) {
    case Kind::success:
        return Tint::green;
    case Kind::warning:
        return Tint::orange;
    case Kind::info:
        break;
    }
    return Tint::accent;
}

void appendRow(SettingsCard& card, SettingsCardItem item) {
    if (!card.content.empty()) {
        card.content.emplace_back(SettingsRowDivider{});
    }
    card.content.push_back(std::move(item));
}

namespace {

std::string shapeOf(const SettingsRow& row) {
    std::string shape = row.subtitle ? "R+(" : "R(";
    for (const SettingsControl& control : row.trailing.controls) {
        shape += std::to_string(control.index());
        if (const auto* picker = std::get_if<SettingsSegmentedPicker>(&control)) {
            shape += '/';
            shape += std::to_string(picker->segments.size());
        }
        shape += ",";
    }
    return shape + ")";
}

std::string shapeOf(const SettingsCardItem& item) {
    if (const auto* row = std::get_if<SettingsRow>(&item)) {
        return shapeOf(*row);
    }
    if (const auto* toggle = std::get_if<SettingsToggleRow>(&item)) {
        return shapeOf(toggle->row());
    }
    if (const auto* itemRow = std::get_if<SettingsItemRow>(&item)) {
        std::string shape = "I";
        shape += std::to_string(static_cast<int>(itemRow->picture.kind));
        shape += shapeOf(itemRow->row());
        return shape;
    }
    return "D";
}

std::string optional(const std::optional<std::string>& text) {
    return text ? "+" : "-";
}

} // namespace

std::string shapeOf(const SettingsPage& page) {
    std::string shape = "P";
    shape += optional(page.subtitle);
    for (const SettingsPageItem& item : page.content) {
        if (const auto* banner = std::get_if<SettingsBanner>(&item)) {
            shape += "|B";
            shape += std::to_string(static_cast<int>(banner->kind));
            shape += optional(banner->message);
            shape += banner->hasButton() ? "+" : "-";
            continue;
        }
        if (std::holds_alternative<SettingsSearchBar>(item)) {
            // Its buttons come and go with the search: the renderer keeps the bar as it is.
            shape += "|S";
            continue;
        }
        if (std::holds_alternative<SettingsCaption>(item)) {
            shape += "|T";
            continue;
        }
        const auto& card = std::get<SettingsCard>(item);
        shape += "|C";
        shape += optional(card.title);
        shape += optional(card.footer);
        shape += "[";
        for (const SettingsCardItem& entry : card.content) {
            shape += shapeOf(entry);
        }
        shape += "]";
    }
    return shape;
}

} // namespace quillet
