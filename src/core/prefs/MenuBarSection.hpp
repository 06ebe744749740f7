#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quillet {

// Where the user wants an application's menu bar items: always shown, hidden until revealed,
// hidden even when revealed, or shown only while the application is frontmost. The raw value is
// the persisted form and the identity the settings panes key their rows by; an application
// without a rule is `visible`.
enum class MenuBarSection { visible, hidden, alwaysHidden, dynamic };

inline constexpr std::array<MenuBarSection, 4> allMenuBarSections{
    MenuBarSection::visible, MenuBarSection::hidden, MenuBarSection::alwaysHidden,
    MenuBarSection::dynamic};

// The explanation the settings panes show beside the section pickers.
inline constexpr std::string_view kMenuBarSectionExplanation =
    "Show · Hide (reveal on hover) · Always (never reveal) · Auto (when app is frontmost)";

std::string_view rawValue(MenuBarSection section);

// The short label of the section pickers.
std::string_view shortLabel(MenuBarSection section);

// Exact, case-sensitive: anything but one of the four raw values is no section at all, so that a
// stored rule nobody understands is dropped rather than guessed.
std::optional<MenuBarSection> menuBarSection(std::string_view rawValue);

} // namespace quillet
