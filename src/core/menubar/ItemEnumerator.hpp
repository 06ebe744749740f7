#pragma once

#include "core/menubar/IdentityResolver.hpp"
#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/Geometry.hpp"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

class AXResolver;
class DisplayGeometry;
class WindowListSource;

// Where one of Quillet's own status items is, in the window server's coordinates.
struct OwnItemFrame {
    std::string autosaveName;
    Rect frame;
};
using OwnItemFrames = std::function<std::vector<OwnItemFrame>()>;

// The one way to list menu bar items: every plausible item window, the main display's items left
// to right, or one entry per logical item. Nothing is cached; every call reads the window list
// afresh.
class ItemEnumerator {
public:
    // Without `ownItems`, our own windows are known only by their titles or their owner.
    ItemEnumerator(const WindowListSource& windows, const DisplayGeometry& displays,
                   const Workspace& workspace, OwnItemFrames ownItems = {})
        : windows_(windows), displays_(displays), identity_(workspace),
          ownItems_(std::move(ownItems)) {}

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
    // Names the untitled windows among `items` (no Screen Recording: on macOS 26 every item
    // window) after the application whose status item Accessibility places there, so that a
    // user can tell them apart and rule them. Asks every running application.
    void nameUntitledByAccessibility(std::vector<MenuBarItem>& items, const AXResolver& reporter,
                                     Pid ownPID) const;
    // Bounds of the active displays, in the window server's order.
    std::vector<Rect> activeDisplayBounds() const;

private:
    void markUntitledOwnItems(std::vector<MenuBarItem>& items) const;

    const WindowListSource& windows_;
    const DisplayGeometry& displays_;
    IdentityResolver identity_;
    OwnItemFrames ownItems_;
};

// Whether a window title or bundle identifier names one of our own items: our autosave names
// all begin with "quillet.", and a title may be our bundle identifier.
bool isOwnItemName(std::string_view name);

// The index of the item listed for the status item window AppKit places at `frame`
// (window-server coordinates), if any. Only the right edge and the height are compared: an item of
// the hiding length is listed narrower than it is.
std::optional<std::size_t> itemListedAt(const std::vector<MenuBarItem>& items, Rect frame);

// The index of the item that an application's own account of its status item (`reported`, from
// Accessibility) points at: among the items on the same display (or, like it, on none) whose
// centre lies within 16 points of the reported centre, the one of the most similar width
// (neighbours' centres can be closer), then the nearer centre.
std::optional<std::size_t> itemReportedAt(const std::vector<MenuBarItem>& items,
                                          const std::vector<Rect>& displays, Rect reported);

// The index of the first display whose bounds contain the point, if any.
std::optional<std::size_t> displayIndexContaining(const std::vector<Rect>& displays, Point point);

} // namespace quillet
