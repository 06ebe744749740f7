#pragma once

#include "core/menubar/IdentityResolver.hpp"
#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/Geometry.hpp"

#include <string_view>
#include <vector>

namespace quillet {

class DisplayGeometry;
class WindowListSource;

// The one way to list menu bar items: every plausible item window, the main display's items left
// to right, or one entry per logical item. Nothing is cached; every call reads the window list
// afresh.
class ItemEnumerator {
public:
    ItemEnumerator(const WindowListSource& windows, const DisplayGeometry& displays,
                   const Workspace& workspace)
        : windows_(windows), displays_(displays), identity_(workspace) {}

    // Every plausible menu bar item window, in window-list order.
    std::vector<MenuBarItem> rawItems(Pid ownPID) const;
    // The raw items whose centre lies on the main display, left to right.
    std::vector<MenuBarItem> mainDisplayItems(Pid ownPID) const;
    // The same of raw items read before.
    std::vector<MenuBarItem> mainDisplayItems(std::vector<MenuBarItem> raw) const;
    // One item per application or named item, our own excluded, leftmost first.
    std::vector<MenuBarItem> logicalItems(Pid ownPID) const;
    // The same of raw items read before.
    std::vector<MenuBarItem> logicalItems(std::vector<MenuBarItem> raw) const;
    // Bounds of the active displays, in the window server's order.
    std::vector<Rect> activeDisplayBounds() const;

private:
    const WindowListSource& windows_;
    const DisplayGeometry& displays_;
    IdentityResolver identity_;
};

// Whether a window title or bundle identifier names one of our own items: our autosave names
// all begin with "quillet.", and a title may be our bundle identifier.
bool isOwnItemName(std::string_view name);

// The index of the first display whose bounds contain the point, if any.
std::optional<std::size_t> displayIndexContaining(const std::vector<Rect>& displays, Point point);

} // namespace quillet
