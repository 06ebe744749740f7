#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillet {

// The five key combinations the user may pick for the global hot key. The raw value is the
// persisted form and the picker's identity; the key code and modifier mask are what the
// platform's hot key service is given.
enum class HotKeyOption { cmdShiftB, optionCmdB, controlCmdB, cmdShiftM, controlOptionB };

inline constexpr std::array<HotKeyOption, 5> allHotKeyOptions{
    HotKeyOption::cmdShiftB, HotKeyOption::optionCmdB, HotKeyOption::controlCmdB,
    HotKeyOption::cmdShiftM, HotKeyOption::controlOptionB};

// The platform's hot key modifier bits.
namespace HotKeyModifier {
inline constexpr std::uint32_t command = 256;
inline constexpr std::uint32_t shift = 512;
inline constexpr std::uint32_t option = 2048;
inline constexpr std::uint32_t control = 4096;
} // namespace HotKeyModifier

std::string_view rawValue(HotKeyOption option);

// Exact and case-sensitive; an unknown string is no option.
std::optional<HotKeyOption> hotKeyOption(std::string_view rawValue);

// The combination as the picker shows it, in the platform's modifier symbols ("⌘⇧B").
std::string_view title(HotKeyOption option);

// The virtual key code of the ANSI layout.
std::uint32_t keyCode(HotKeyOption option);

std::uint32_t modifierMask(HotKeyOption option);

} // namespace quillet
