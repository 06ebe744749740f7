#pragma once

#include "core/settings/SettingsComponents.hpp"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// The panes of the settings window, in sidebar order. The raw value is what "--tab=" names.
enum class SettingsPane { general, items, permissions };

inline constexpr std::array<SettingsPane, 3> allSettingsPanes{
    SettingsPane::general, SettingsPane::items, SettingsPane::permissions};

std::string_view rawValue(SettingsPane pane);
// Exact and case-sensitive; any other string is no pane.
std::optional<SettingsPane> settingsPane(std::string_view rawValue);

// The sidebar entry: title, SF Symbol and its tint.
std::string_view title(SettingsPane pane);
std::string_view symbol(SettingsPane pane);
Tint tint(SettingsPane pane);

// The pane the window opens on: the first "--tab=" argument's value when it names a pane
// exactly, otherwise General.
SettingsPane initialPane(const std::vector<std::string>& arguments);

} // namespace quillet
