#pragma once

#include "core/menubar/MenuBarItem.hpp"

#include <cstdint>
#include <vector>

namespace quillet {

// Where keyboard navigation stands: the items it walks, left to right, and the focused one.
struct NavState {
    std::vector<MenuBarItem> items;
    std::int64_t index = 0;

    std::int64_t count() const { return static_cast<std::int64_t>(items.size()); }
    bool hasFocus() const { return index >= 0 && index < count(); }
    friend bool operator==(const NavState&, const NavState&) = default;
};

} // namespace quillet
