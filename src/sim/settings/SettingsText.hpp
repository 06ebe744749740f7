#pragma once

#include "core/ports/SettingsWindowHost.hpp"

#include <string>
#include <vector>

namespace quillet::sim::SettingsText {

// The settings window as a user reads it, one entry per line: the title, the sidebar with its
// selection, the page (banners, cards of rows with their controls, footers) and any alert on
// top. Symbols and colours are not drawn, except the banner kind's sign and a menu bar item's
// picture: "▣" its snapshot, "◆" its app's icon, or its symbol's name in parentheses.
std::vector<std::string> render(const std::string& title, const SettingsWindowContent& content);

// One row's first line: its title and its trailing controls ("Reveal on hover  [on]").
std::string rowLine(const SettingsRow& row);

// A menu bar item's row, the same way, its picture before its name.
std::string itemRowLine(const SettingsItemRow& row);

// A control as text: "[on]", "[−|+]", "[⌘⇧B ▾]", "[Save…]", "Granted", …
std::string control(const SettingsControl& control);

} // namespace quillet::sim::SettingsText
