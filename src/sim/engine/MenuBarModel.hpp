#pragma once

#include "core/ports/Geometry.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillet::sim {

// How the window server names and owns status item windows.
enum class MenuBarNaming {
    // macOS 26: Control Center owns every status item window; the title is the item's autosave
    // name ("Item-0" unless the application chose one, often its bundle identifier), and some
    // system items are numbered ("BentoBox-0").
    macOS26,
    // Earlier systems: each window belongs to the process that made the item.
    perApplication,
};

// Where a Command-dragged item drops. Nobody here knows which one a Mac follows (the window list
// of macOS 26 shows placeholder windows while an item is dragged, a hint that the bar reorders
// live), so the simulator offers each plausible rule and the engine must be right under all.
enum class DropModel {
    // Nothing moves during the drag; the release drops the item into the slot under the pointer.
    slotAtRelease,
    // Live: a gap as wide as the item travels to the slot under the pointer, the neighbours
    // shifting around it; the release drops the item into the gap.
    liveByPointer,
    // Live: the gap passes a neighbour once the dragged item's leading edge crosses its midpoint.
    liveByLeadingEdge,
    // Live: the gap passes a neighbour once the dragged item's leading edge has passed all of it.
    liveByWholeItem,
    // Nothing moves during the drag; the release drops the item into the gap between items that
    // is nearest the pointer.
    nearestGapAtRelease,
};

// The simulated status bar: the status items of the main display's menu bar, laid out from the
// display's right edge leftwards, each as wide as its length, so that one very wide item pushes
// everything on its left off the left edge of the screen.
//
// Rules it keeps, as macOS does:
//  - A new item appears at the left end of the items. Immovable system items (the clock,
//    Control Center) form a fixed part at the right end; nothing is dropped into it.
//  - Our own items are status items of this process. A variable length (any negative or
//    non-finite length) takes the content's width: kImageWidth with an image, kEmptyWidth
//    without. Their autosave name is "Item-N" (N counts our items) until set, and it is the
//    window's title.
//  - Remembered positions, per autosave name of our items: when one of our items is dropped by
//    a drag or removed, its right edge's distance from the display's right edge is remembered.
//    An item that is created, or given an autosave name, with a remembered distance goes to the
//    movable slot whose right-edge distance is nearest to it (the right-hand slot on a tie).
//  - A Command-drag lifts a movable item, which then follows the pointer; where it drops is the
//    choice of DropModel (MenuBarModel+Drag.cpp). With the models that drop at release the others
//    close its gap at once; the slot under the pointer is right of the item under it when the
//    pointer is on that item's right half, left of it otherwise, the left end when the pointer is
//    left of every item, the right end of the movable part otherwise. The pointer cannot leave
//    the display, so positions are clamped to it.
//  - Known: an application's item comes back where a Command-drag last left it (the menu bar
//    saves the position under the item's autosave name in the application's defaults), and an
//    item never dragged comes back at the left end: applications' items are remembered by
//    drops only, and keep their place when the application quits. Reported but not modelled
//    (FB9052637): removing a status item forgets its position; our own items here are still
//    remembered where they were removed, as the spacers rely on it.
class MenuBarModel {
public:
    static constexpr double kImageWidth = 22.0;
    static constexpr double kEmptyWidth = 10.0;
    static constexpr const char* kControlCenterName = "Control Center";

    enum class Kind { own, application, system };

    struct Item {
        WindowID window = 0;
        Kind kind = Kind::application;
        // The process that made the item, and its name (the label in the rendered bar).
        Pid pid = 0;
        std::string appName;
        // Our items: the autosave name. Applications' items: the window title. System items:
        // the name without a number.
        std::string title;
        // Our items: the status item's length. Others: their width.
        double length = 0;
        bool hasImage = false;
        bool movable = true;
        bool numberedOnMacOS26 = false;
        // Applications' items: the application's bundle identifier, under which (with the
        // title) the menu bar remembers where the item was dropped.
        std::string bundleID;
    };

    // What the window list says of an item's window.
    struct WindowIdentity {
        Pid ownerPID = 0;
        std::string ownerName;
        std::string title;
    };

    void setGeometry(Rect mainDisplay, double thickness);
    double thickness() const { return thickness_; }
    const Rect& mainDisplay() const { return display_; }
    void setNaming(MenuBarNaming naming) { naming_ = naming; }
    MenuBarNaming naming() const { return naming_; }
    void setOwnProcess(Pid pid, std::string name);
    Pid ownPID() const { return ownPID_; }
    void setControlCenterPID(Pid pid) { controlCenterPID_ = pid; }
    Pid controlCenterPID() const { return controlCenterPID_; }
    void setFramesLag(bool lag) { framesLag_ = lag; }
    bool framesLag() const { return framesLag_; }
    void setDropModel(DropModel model) { dropModel_ = model; }
    DropModel dropModel() const { return dropModel_; }

    // An application's or a system item, where macOS puts a new one (an application's item where
    // it was last dropped, if ever); returns its window.
    WindowID add(Item item);
    // One of our own status items, at the left end unless its default autosave name has a
    // remembered position.
    WindowID addOwn(double length);
    // False when there is no such window. Our items' positions are remembered (see above).
    bool remove(WindowID window);
    void removeProcess(Pid pid);

    void setLength(WindowID window, double length);
    void setHasImage(WindowID window, bool hasImage);
    void setAutosaveName(WindowID window, const std::string& name);

    const Item* item(WindowID window) const;
    // Every item, the lifted one included, in the order their windows were made.
    std::vector<const Item*> itemsByWindow() const;
    // Left to right, without a lifted item.
    std::vector<WindowID> order() const;
    std::optional<Rect> frame(WindowID window) const;
    // The frame as a window description reports it: with lagging frames, the frame of the
    // previous description once after the window moved.
    std::optional<Rect> describedFrame(WindowID window);
    WindowIdentity identity(const Item& item) const;
    // Where the first item the process made shows.
    std::optional<Rect> firstFrameOfProcess(Pid pid) const;
    std::optional<double> rememberedDistance(const std::string& autosaveName) const;

    // The hosted bar of macOS 27 (MenuBarModel+Hosted.cpp): the same items in the same order,
    // laid out on every display by the system's host process.
    void setHosted(bool hosted) { hosted_ = hosted; }
    bool isHosted() const { return hosted_; }
    // How much of each display's bar the app menus keep: the status area ends there.
    void setAppMenusWidth(double width) { appMenusWidth_ = width; }
    // Where one item stands on one display's hosted bar.
    struct HostedSlot {
        WindowID window = 0;
        // Nullopt: in the overflow menu.
        std::optional<Rect> frame;
        // Too long for this display: gone from the bar and its tree (but see droppedRoom).
        bool dropped = false;
    };
    // The slots of `display`'s bar, left to right, parallel to order().
    std::vector<HostedSlot> hostedLayout(const Rect& display) const;
    // The room that dropped items still take on `display`, which the app menus lose.
    double droppedRoom(const Rect& display) const;
    // Where the item shows on the main display: its frame, or on the hosted bar its slot's
    // frame (none in the overflow or dropped).
    std::optional<Rect> shownFrame(WindowID window) const;
    // The frame every one of our own items reports on the hosted bar.
    Rect placeholderFrame() const;
    // A frame on the main display in AppKit's coordinates, measured up from its bottom.
    Rect mainDisplayFrameInAppKit(const Rect& frame) const;
    static constexpr double kItemChrome = 16.0;

    // Command-drags, in window-server coordinates.
    bool lift(WindowID window, Point pointer);
    void dragTo(double pointerX);
    void drop(double pointerX);
    std::optional<WindowID> lifted() const;
    bool isOnDisplay(Point point) const { return display_.contains(point); }

    // The bar as one line, left to right: "[Name]" for a visible item and "(Name)" for one off
    // the left edge of the display, our own items as "<name length>" ("quillet." dropped, the
    // length shown only when it is not variable; "(<name>)" off the edge), "|" before the fixed
    // part, and a lifted item last as "^[Name]". On the hosted bar, an item in the overflow shows
    // as "«[Name]»", a dropped one as "{<name length>}", and the line ends in "(app menus
    // blanked)" while a dropped item takes their room.
    std::string render() const;

private:
    struct Lifted {
        Item item;
        double grabOffset = 0;
        double x = 0;
        // With a live drop model: the index in items_ before which the gap stands.
        std::optional<std::size_t> gap;
    };

    double width(const Item& item) const;
    bool isDroppedOn(const Item& item, const Rect& display) const;
    std::string renderHosted() const;
    // Frames parallel to items_.
    std::vector<Rect> layout() const;
    std::size_t fixedStart() const;
    std::size_t slotAt(double pointerX) const;
    // Drop models (MenuBarModel+Drag.cpp).
    bool isLive() const;
    // Moves the gap after the lifted item moved to `x` from `previousX`.
    void moveGap(double x, double previousX);
    std::size_t nearestGap(double pointerX) const;
    std::size_t dropSlot(double pointerX) const;
    std::vector<Item>::iterator find(WindowID window);
    void insertNear(Item item, double distance);
    void remember(const Item& item, const Rect& frame);
    static std::string positionKey(const Item& item);
    std::string label(const Item& item) const;

    Rect display_;
    double thickness_ = 24.0;
    MenuBarNaming naming_ = MenuBarNaming::macOS26;
    Pid ownPID_ = 4242;
    std::string ownName_ = "Quillet";
    Pid controlCenterPID_ = 612;
    bool framesLag_ = false;
    bool hosted_ = false;
    // Assumed: Finder's menus with the Apple menu, on a laptop.
    double appMenusWidth_ = 400.0;
    DropModel dropModel_ = DropModel::slotAtRelease;
    WindowID nextWindow_ = 1000;
    int ownItemsMade_ = 0;
    std::vector<Item> items_;
    std::optional<Lifted> lifted_;
    std::map<std::string, double> remembered_;
    std::map<WindowID, Rect> described_;
};

} // namespace quillet::sim
