#include "core/prefs/HotKeyOption.hpp"

#include <cstddef>

namespace quillet {

namespace {

constexpr std::uint32_t kKeyB = 11;
constexpr std::uint32_t kKeyM = 46;

// Indexed by the option's order.
constexpr std::array<std::string_view, 5> kRawValues{"cmdShiftB", "optionCmdB", "controlCmdB",
                                                     "cmdShiftM", "controlOptionB"};
constexpr std::array<std::string_view, 5> kTitles{"⌘⇧B", "⌥⌘B", "⌃⌘B", "⌘⇧M", "⌃⌥B"};
constexpr std::array<std::uint32_t, 5> kModifierMasks{
    HotKeyModifier::command | HotKeyModifier::shift,
    HotKeyModifier::command | HotKeyModifier::option,
    HotKeyModifier::command | HotKeyModifier::control,
    HotKeyModifier::command | HotKeyModifier::shift,
    HotKeyModifier::option | HotKeyModifier::control};

std::size_t order(HotKeyOption option) {
    return static_cast<std::size_t>(option);
}

} // namespace

std::string_view rawValue(HotKeyOption option) {
    return kRawValues[order(option)];
}

std::optional<HotKeyOption> hotKeyOption(std::string_view rawValue) {
    for (HotKeyOption option : allHotKeyOptions) {
        if (kRawValues[order(option)] == rawValue) {
            return option;
        }
    }
    return std::nullopt;
}

std::string_view title(HotKeyOption option) {
    return kTitles[order(option)];
}

std::uint32_t keyCode(HotKeyOption option) {
    return option == HotKeyOption::cmdShiftM ? kKeyM : kKeyB;
}

std::uint32_t modifierMask(HotKeyOption option) {
    return kModifierMasks[order(option)];
}

} // namespace quillet
