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

// How far (in points) a window's centre may lie from the accessibility frame's centre and still
// be taken for the same item.
constexpr double kAccessibilityMatchDistance = 16.0;
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
    const auto item = resolve(bundleID, fallbackWID);
    if (!item) {
        co_return;
    }
    co_await placeWindow(item->windowID, item->displayIndex, section);
    // An application may show several items, and the rule is the application's: each of them
    // goes where the first one went.
    if (bundleID) {
        for (const Resolved& other : otherWindowsOf(*bundleID, item->windowID)) {
            co_await placeWindow(other.windowID, other.displayIndex, section);
        }
    }
}

Task<> ControlItemManager::placeWindow(WindowID window, std::size_t displayIndex,
                                       MenuBarSection section) {
    switch (section) {
    case MenuBarSection::visible:
        if (auto separator = controlWID(kSeparatorName, displayIndex)) {
            co_await performMove(window, ItemMover::Side::right, *separator);
        }
        break;
    case MenuBarSection::alwaysHidden:
        if (auto border = controlWID(kAlwaysSeparatorName, displayIndex)) {
            co_await performMove(window, ItemMover::Side::left, *border);
        }
        break;
    case MenuBarSection::hidden:
    case MenuBarSection::dynamic: {
        const auto separator = controlWID(kSeparatorName, displayIndex);
        if (!separator) {
            co_return;
        }
        co_await performMove(window, ItemMover::Side::left, *separator);
        // Dropped past the always-separator too (the hidden zone was empty): the border moves,
        // not the item, since dragging the item back right could overshoot the separator again.
        const auto border = controlWID(kAlwaysSeparatorName, displayIndex);
        const auto itemFrame = frameOf(window);
        const auto borderFrame = border ? frameOf(*border) : std::nullopt;
        if (itemFrame && borderFrame && itemFrame->minX() <= borderFrame->minX()) {
            co_await performMove(*border, ItemMover::Side::left, window);
        }
        break;
    }
    }
}

Task<> ControlItemManager::placeMisplacedVisibleItems() {
    const auto items = enumerator_.logicalItems(deps_.ownPID);
    for (const MenuBarItem& listed : items) {
        const auto key = ruleKey(listed);
        if (ruledSection(deps_.preferences.sectionByBundleID(), key) != MenuBarSection::visible) {
            continue;
        }
        const auto item = resolve(key, listed.windowID);
        const auto separator = item ? controlWID(kSeparatorName, item->displayIndex) : std::nullopt;
        const auto itemFrame = item ? frameOf(item->windowID) : std::nullopt;
        const auto separatorFrame = separator ? frameOf(*separator) : std::nullopt;
        if (itemFrame && separatorFrame && itemFrame->midX() < separatorFrame->midX()) {
            co_await place(key, listed.windowID, MenuBarSection::visible);
        }
    }
}

// Window numbers change when an application relaunches and titles are often generic, so an
// item is found by what its application reports first, then by its key, and only then by the
// window it had when it was listed.
std::optional<ControlItemManager::Resolved>
ControlItemManager::resolve(const std::optional<std::string>& bundleID,
                            WindowID fallbackWID) const {
    const auto raw = enumerator_.rawItems(deps_.ownPID);
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
        if (reportedDisplay) {
            const MenuBarItem* best = nullptr;
            auto widthGap = [&](const MenuBarItem& item) {
                return std::abs(item.frame.width() - reported->width());
            };
            auto centreGap = [&](const MenuBarItem& item) {
                return std::abs(item.frame.midX() - reported->midX());
            };
            for (const MenuBarItem& item : raw) {
                if (displayOf(item) != reportedDisplay ||
                    !(centreGap(item) < kAccessibilityMatchDistance)) {
                    continue;
                }
                if (!best || widthGap(item) < widthGap(*best) ||
                    (widthGap(item) == widthGap(*best) && centreGap(item) < centreGap(*best))) {
                    best = &item;
                }
            }
            if (best) {
                return Resolved{best->windowID, *reportedDisplay};
            }
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
    std::vector<Resolved> others;
    for (const MenuBarItem& item : enumerator_.rawItems(deps_.ownPID)) {
        const auto display = displayIndexContaining(displays, item.frame.center());
        if (item.windowID != placed && display && isNamedBy(item, key)) {
            others.push_back({item.windowID, *display});
        }
    }
    return others;
}

std::optional<WindowID> ControlItemManager::controlWID(std::string_view name,
                                                       std::size_t displayIndex) const {
    const auto displays = enumerator_.activeDisplayBounds();
    const auto raw = enumerator_.rawItems(deps_.ownPID);
    auto onDisplay = [&](const MenuBarItem& item) {
        return displayIndexContaining(displays, item.frame.center()) == displayIndex;
    };
    for (const MenuBarItem& item : raw) {
        if (item.windowName == name && onDisplay(item)) {
            return item.windowID;
        }
    }
    const auto untitled = ownItemByFrame(name, raw);
    return untitled && onDisplay(*untitled) ? std::optional(untitled->windowID) : std::nullopt;
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
