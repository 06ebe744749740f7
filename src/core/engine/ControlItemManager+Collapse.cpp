// Verifying every collapse. Neither a separator's length nor our own windows prove that anything
// was hidden (on the hosted bar of macOS 27 a long item is silently dropped, and on very wide
// displays even 10000 pt may not reach), so the item next to the separator is looked at before
// and after: it must have left the bar. When it has not, the bar is shown again, so that the
// toggle never claims a hidden zone that the user can still see, and the user is told once.

#include "core/engine/ControlItemManager.hpp"

#include "core/app/Notices.hpp"
#include "core/engine/HostedNotices.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/LogSink.hpp"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>

namespace quillet {

using namespace std::chrono_literals;

namespace {

// Positions lag after a change of length: the first look waits this long, and the item's place
// is trusted once two looks this far apart agree, within a bounded number of looks.
constexpr Duration kCollapseLookInterval = 150ms;
constexpr int kMaxCollapseLooks = 10;

} // namespace

std::optional<ControlItemManager::HiddenNeighbour> ControlItemManager::hiddenNeighbour() const {
    // The hosted bar names none of our items: what is left of the separator is read afterwards,
    // by the length that tells the separator apart.
    if (barKind_ == BarKind::hosted) {
        return HiddenNeighbour{};
    }
    const auto items = mainDisplayItems();
    const auto separator = std::find_if(items.begin(), items.end(), [](const MenuBarItem& item) {
        return item.isOwnControlItem && item.windowName == kSeparatorName;
    });
    if (separator == items.end()) {
        return std::nullopt;
    }
    const Rect display = deps_.displays.mainDisplayBounds();
    for (auto item = std::make_reverse_iterator(separator); item != items.rend(); ++item) {
        // The always-hidden border ends the hidden zone: an empty zone has nothing to show.
        if (item->isOwnControlItem && item->windowName == kAlwaysSeparatorName) {
            return std::nullopt;
        }
        // Our spacers travel with the zone but prove nothing about the other applications.
        if (item->isOwnControlItem) {
            continue;
        }
        if (!isOnBar(item->frame, display)) {
            return std::nullopt;
        }
        return HiddenNeighbour{item->displayLabel, item->windowID, display};
    }
    return std::nullopt;
}

bool ControlItemManager::isOnBar(const Rect& frame, const Rect& display) {
    // Pushed off the left edge, a window is no longer in this display's menu bar, even where it
    // now overlaps a display further left: that display's bar has its own windows.
    return frame.maxX() > display.minX() + 1.0;
}

std::optional<ControlItemManager::StillShown>
ControlItemManager::stillShown(const HiddenNeighbour& neighbour) const {
    if (neighbour.window == 0) {
        return hostedStillShown();
    }
    const auto frame = frameOf(neighbour.window);
    if (!frame || !isOnBar(*frame, neighbour.display)) {
        return std::nullopt;
    }
    return StillShown{neighbour.label + " is still in the menu bar after the separator widened",
                      *frame, true};
}

void ControlItemManager::checkCollapse(const HiddenNeighbour& neighbour) {
    collapseCheck_.cancel();
    // A position read too early is the old one, never a later one: an item seen gone is gone,
    // while one seen in place is only judged once two looks agree.
    auto first = stillShown(neighbour);
    if (!first) {
        return;
    }
    collapseCheck_ = TaskHandle::spawn(
        deps_.scheduler, checkCollapseLater(deps_.scheduler, weak_from_this(), collapses_,
                                            neighbour, std::move(*first)));
}

Task<> ControlItemManager::checkCollapseLater(Scheduler& scheduler,
                                              std::weak_ptr<ControlItemManager> self,
                                              std::uint64_t collapse, HiddenNeighbour neighbour,
                                              StillShown seen) {
    StillShown previous = std::move(seen);
    for (int look = 1; look < kMaxCollapseLooks; ++look) {
        const bool waited = co_await sleep(scheduler, kCollapseLookInterval);
        auto manager = self.lock();
        // Another change of the bar since: that one is checked, if it needs to be.
        if (!waited || !manager || manager->collapses_ != collapse) {
            co_return;
        }
        // Lengths changed: what the bar shows is looked at afresh.
        if (manager->adoptPlacedExtras()) {
            previous = StillShown{};
            continue;
        }
        auto now = manager->stillShown(neighbour);
        if (!now) {
            co_return;
        }
        if (*now == previous) {
            manager->collapseFailed(*now);
            co_return;
        }
        previous = std::move(*now);
    }
    // Still on the bar after every look, only never twice in one place.
    if (auto manager = self.lock(); manager && manager->collapses_ == collapse) {
        manager->collapseFailed(previous);
    }
}

void ControlItemManager::collapseFailed(const StillShown& shown) {
    setExpanded(true);
    // One separator under the length the hosted bar accepts may not reach across a wide display:
    // more share the push once the user has put them beside it.
    const std::size_t waiting =
        barKind_ == BarKind::hosted && shown.shortOfLength && addExtraSeparators()
            ? extraSeparators_.size() - placedExtras_.size()
            : 0;
    deps_.notices.post(HostedNotices::collapseFailed(shown.what, waiting));
}

} // namespace quillet
