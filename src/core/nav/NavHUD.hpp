#pragma once

#include "core/ports/FloatingPanel.hpp"

#include <string>
#include <string_view>

namespace quillet {

class KeyboardNavController;

// What the hint panel shows: the focused item's name and the keys, with the focus position. It
// has no state of its own: it reads the controller when built, and the controller builds a new
// one on every change of its state.
class NavHUD {
public:
    static constexpr std::string_view kNoFocusTitle = "—";
    static constexpr std::string_view kKeysHint = "←  →  navigate     ⏎ open     esc close   ";

    explicit NavHUD(const KeyboardNavController& shown) : controller(shown) {}

    // The focused item's label, or the em dash when nothing is focused.
    std::string title() const;
    // The keys, then the position ("2 / 5").
    std::string hint() const;
    PanelContent body() const;

    const KeyboardNavController& controller;
};

} // namespace quillet
