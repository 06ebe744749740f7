// Moving one item into a zone: finding its window, the border it must cross, and the drag.

#include "core/engine/ControlItemManager.hpp"

#include "core/engine/HID.hpp"
#include "core/engine/RuleKey.hpp"
#include "core/menubar/ScreenCoordinates.hpp"
#include "core/menubar/SystemItemCatalog.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/LogSink.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <algorithm>
#include <cmath>
#include <string>

namespace quillet {

namespace {

constexpr int kMoveAttempts = 6;

std::string yesNo(bool value) {
    return value ? "true" : "false";
}

} // namespace

Task<> ControlItemManager::place(std::optional<std::string> bundleID, WindowID fallbackWID,
                                 MenuBarSection section) {
    // A rule for one of our own items would drag a zone border out of place.
    if (bundleID && namesOwnItem(*bundleID)) {
        deps_.log.log("Quillet: ignoring the rule for Quillet's own item " + *bundleID);
        co_return;
    }
    // The system's own protected items stay put: some cannot be dragged at all, and some (such
    // as the recording indicator) must never leave the user's sight.
    if (auto info = bundleID ? SystemItemCatalog::info(*bundleID) : std::nullopt) {
        if (!info->movable || (!info->hideable && section != MenuBarSection::visible)) {
            deps_.log.log("Quillet: refusing to " + std::string(rawValue(section)) +
                          " system item " + *bundleID + " (movable=" + yesNo(info->movable) +
                          " hideable=" + yesNo(info->hideable) + ")");
            co_return;
        }
    }
    // One reading finds the item and the border it crosses; after the drag the bar is read again.
    const auto [item, border] = [&] {
        const BarReading bar = readBar();
        const auto found = resolve(bundleID, fallbackWID, bar);
        return std::pair{found,
                         found ? borderInto(section, found->displayIndex, bar) : std::nullopt};
    }();
    if (!item) {
        co_return;
    }
    co_await placeWindow(item->windowID, item->displayIndex, section, border);
    // An application may show several items, and the rule is the application's: each of them
    // goes where the first one went.
    if (bundleID) {
        for (const Resolved& other : otherWindowsOf(*bundleID, item->windowID)) {
            const auto otherBorder = borderInto(section, other.displayIndex, readBar());
            co_await placeWindow(other.windowID, other.displayIndex, section, otherBorder);
        }
    }
}

std::optional<WindowID> ControlItemManager::borderInto(MenuBarSection section,
                                                       std::size_t displayIndex,
                                                       const BarReading& bar) const {
    return controlWID(section == MenuBarSection::alwaysHidden ? kAlwaysSeparatorName
                                                              : kSeparatorName,
                      displayIndex, bar);
}

Task<> ControlItemManager::placeWindow(WindowID window, std::size_t displayIndex,
                                       MenuBarSection section, std::optional<WindowID> border) {
    if (!border) {
        co_return;
    }
    const bool intoView = section == MenuBarSection::visible;
    co_await performMove(window, intoView ? ItemMover::Side::right : ItemMover::Side::left,
                         *border);
    if (section != MenuBarSection::hidden && section != MenuBarSection::dynamic) {
        co_return;
    }
    // Dropped past the always-separator too (the hidden zone was empty): the border moves, not
    // the item, since dragging the item back right could overshoot the separator again.
    const auto alwaysSeparator = controlWID(kAlwaysSeparatorName, displayIndex);
    const auto itemFrame = frameOf(window);
    const auto borderFrame = alwaysSeparator ? frameOf(*alwaysSeparator) : std::nullopt;
    if (itemFrame && borderFrame && itemFrame->minX() <= borderFrame->minX()) {
        co_await performMove(*alwaysSeparator, ItemMover::Side::left, window);
    }
}

Task<> ControlItemManager::placeMisplacedVisibleItems() {
    // One reading lists the items and checks them up to the first one that must move; after each
    // drag the bar is read again.
    auto [items, next] = [this] {
        const BarReading bar = readBar();
        auto listed = enumerator_.logicalItems(bar.raw);
        const std::size_t first = nextMisplacedVisible(listed, 0, bar);
        return std::pair{std::move(listed), first};
    }();
    while (next < items.size()) {
        co_await place(ruleKey(items[next]), items[next].windowID, MenuBarSection::visible);
        next = nextMisplacedVisible(items, next + 1, readBar());
    }
}

std::size_t ControlItemManager::nextMisplacedVisible(const std::vector<MenuBarItem>& items,
                                                     std::size_t from,
                                                     const BarReading& bar) const {
    for (std::size_t i = from; i < items.size(); ++i) {
        const auto key = ruleKey(items[i]);
        if (ruledSection(deps_.preferences.sectionByBundleID(), key) != MenuBarSection::visible) {
            continue;
        }
        const auto item = resolve(key, items[i].windowID, bar);
        const auto separator =
            item ? controlWID(kSeparatorName, item->displayIndex, bar) : std::nullopt;
        const auto itemFrame = item ? frameOf(item->windowID) : std::nullopt;
        const auto separatorFrame = separator ? frameOf(*separator) : std::nullopt;
        if (itemFrame && separatorFrame && itemFrame->midX() < separatorFrame->midX()) {
            return i;
        }
    }
    return items.size();
}

ControlItemManager::BarReading ControlItemManager::readBar() const {
    return {enumerator_.rawItems(deps_.ownPID)};
}

std::optional<ControlItemManager::Resolved>
ControlItemManager::resolve(const std::optional<std::string>& bundleID,
                            WindowID fallbackWID) const {
    return resolve(bundleID, fallbackWID, readBar());
}

// Window numbers change when an application relaunches and titles are often generic, so an
// item is found by what its application reports first, then by its key, and only then by the
// window it had when it was listed.
std::optional<ControlItemManager::Resolved>
ControlItemManager::resolve(const std::optional<std::string>& bundleID, WindowID fallbackWID,
                            const BarReading& bar) const {
    const auto& raw = bar.raw;
    const auto displays = enumerator_.activeDisplayBounds();
    auto displayOf = [&](const MenuBarItem& item) {
        return displayIndexContaining(displays, item.frame.center());
    };

    if (bundleID) {
        // The application's own account of where its item is; among the windows near it, the
        // one of the most similar width, since neighbours' centres can be closer.
        const auto reported = accessibilityFrames_.menuBarItemFrame(*bundleID);
        const auto reportedDisplay =
            reported ? displayIndexContaining(displays, reported->center()) : std::nullopt;
        if (const auto found =
                reportedDisplay ? itemReportedAt(raw, displays, *reported) : std::nullopt) {
            return Resolved{raw[*found].windowID, *reportedDisplay};
        }

        std::vector<const MenuBarItem*> candidates;
        for (const MenuBarItem& item : raw) {
            // A window on no display could not be given a border to cross anyway.
            if (isNamedBy(item, *bundleID) && displayOf(item)) {
                candidates.push_back(&item);
            }
        }
        // With several windows of one application, the one on the display the user is at.
        if (const auto cursor = cursorDisplayIndex(displays)) {
            for (const MenuBarItem* candidate : candidates) {
                if (displayOf(*candidate) == cursor) {
                    return Resolved{candidate->windowID, *cursor};
                }
            }
        }
        if (!candidates.empty()) {
            return Resolved{candidates.front()->windowID, *displayOf(*candidates.front())};
        }
    }

    // Window 0 stands for no window at all.
    if (fallbackWID != 0) {
        for (const MenuBarItem& item : raw) {
            if (item.windowID == fallbackWID) {
                const auto display = displayOf(item);
                return display ? std::optional(Resolved{item.windowID, *display}) : std::nullopt;
            }
        }
    }
    return std::nullopt;
}

std::vector<ControlItemManager::Resolved>
ControlItemManager::otherWindowsOf(const std::string& key, WindowID placed) const {
    const auto displays = enumerator_.activeDisplayBounds();
    const auto raw = enumerator_.rawItems(deps_.ownPID);
    std::vector<Resolved> others;
    auto add = [&](const MenuBarItem& item) {
        const auto display = displayIndexContaining(displays, item.frame.center());
        const bool known = item.windowID == placed || std::ranges::any_of(others, [&](auto& other) {
                               return other.windowID == item.windowID;
                           });
        if (display && !known) {
            others.push_back({item.windowID, *display});
        }
    };
    for (const MenuBarItem& item : raw) {
        if (isNamedBy(item, key)) {
            add(item);
        }
    }
    for (WindowID window : untitledWindowsReportedFor(key, raw, displays)) {
        add(*std::ranges::find(raw, window, &MenuBarItem::windowID));
    }
    return others;
}

// Untitled windows (no Screen Recording) are known only by what each process of the application
// reports, and two copies of one application both obey its rule.
std::vector<WindowID>
ControlItemManager::untitledWindowsReportedFor(const std::string& key,
                                               const std::vector<MenuBarItem>& items,
                                               const std::vector<Rect>& displays) const {
    const bool untitled = std::ranges::any_of(
        items, [](const MenuBarItem& item) { return !item.windowName && !item.isOwnControlItem; });
    std::vector<WindowID> windows;
    if (!untitled || key.starts_with("sys:")) {
        return windows;
    }
    for (const Rect& frame : accessibilityFrames_.menuBarItemFrames(key)) {
        const auto found = itemReportedAt(items, displays, frame);
        if (found && !items[*found].windowName && !items[*found].isOwnControlItem) {
            windows.push_back(items[*found].windowID);
        }
    }
    return windows;
}

std::optional<WindowID> ControlItemManager::controlWID(std::string_view name,
                                                       std::size_t displayIndex) const {
    return controlWID(name, displayIndex, readBar());
}

std::optional<WindowID> ControlItemManager::controlWID(std::string_view name,
                                                       std::size_t displayIndex,
                                                       const BarReading& bar) const {
    const auto displays = enumerator_.activeDisplayBounds();
    const auto& raw = bar.raw;
    auto onDisplay = [&](const MenuBarItem& item) {
        return displayIndexContaining(displays, item.frame.center()) == displayIndex;
    };
    for (const MenuBarItem& item : raw) {
        if (item.windowName == name && onDisplay(item)) {
            return item.windowID;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t>
ControlItemManager::cursorDisplayIndex(const std::vector<Rect>& displays) const {
    // The pointer is in AppKit's coordinates; displays are in the window server's.
    const auto pointer = windowServerPoint(deps_.displays, deps_.displays.pointerLocation());
    return pointer ? displayIndexContaining(displays, *pointer) : std::nullopt;
}

Task<bool> ControlItemManager::performMove(WindowID item, ItemMover::Side side, WindowID anchor) {
    // Without the grant every attempt would be dropped behind a hidden cursor. On the hosted bar
    // a posted drag takes over the pointer and moves nothing.
    if (!moveAccess_.allowsMoves() || barKind_ == BarKind::hosted) {
        co_return false;
    }
    // The drag takes its time in sleeps between synthetic events; the main thread stays free.
    ++movesInFlight_;
    const bool landed = co_await inBackground<bool>(deps_.scheduler, [this, item, side, anchor] {
        return ItemMover::move(deps_.input, deps_.windows, item, side, anchor, kMoveAttempts);
    });
    --movesInFlight_;
    if (!landed) {
        deps_.log.log("Quillet: move of window " + std::to_string(item) + " " +
                      (side == ItemMover::Side::left ? "left" : "right") + " of " +
                      std::to_string(anchor) + " did not land");
    }
    co_return landed;
}

std::optional<Rect> ControlItemManager::frameOf(WindowID window) const {
    return HID::frame(deps_.windows, window);
}

} // namespace quillet
