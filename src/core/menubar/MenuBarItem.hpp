#pragma once

#include "core/menubar/SystemItemCatalog.hpp"
#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace quillet {

// One menu bar item window, as the item enumerator saw it in one snapshot of the window list.
// Its identity is its window number.
struct MenuBarItem {
    WindowID windowID = 0;
    Rect frame;
    Pid ownerPID = 0;
    std::string ownerName;
    std::optional<std::string> windowName;
    std::int64_t layer = 0;
    std::optional<std::string> bundleID;
    std::string displayLabel;
    std::optional<SystemItemCatalog::Info> systemInfo;
    bool isOwnControlItem = false;

    WindowID id() const { return windowID; }
    friend bool operator==(const MenuBarItem&, const MenuBarItem&) = default;
};

} // namespace quillet
