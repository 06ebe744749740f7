// The layout jobs: the full arrangement of the zones, and the placement of single items.

#include "core/engine/ControlItemManager.hpp"

#include "core/engine/RuleKey.hpp"
#include "core/engine/VisibleItemEnforcer.hpp"
#include "core/ports/LogSink.hpp"
#include "core/ports/Workspace.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <algorithm>
#include <chrono>

namespace quillet {

using namespace std::chrono_literals;

namespace {

// Lets the menu bar settle (after launch or a profile switch) before anything is measured.
constexpr Duration kSettleBeforeArranging = 1000ms;

constexpr std::string_view kControlItemsMissing =
    "Quillet: not all control items found at arrange time — zone layout may be unestablished";

// The leftmost item of `items` that is not ours, when it stands left of `border`.
std::optional<WindowID> leftmostOtherItem(const std::vector<MenuBarItem>& items,
                                          const std::optional<Rect>& border) {
    const MenuBarItem* leftmost = nullptr;
    for (const MenuBarItem& item : items) {
        if (!item.isOwnControlItem && (!leftmost || item.frame.minX() < leftmost->frame.minX())) {
            leftmost = &item;
        }
    }
    return leftmost && border && leftmost->frame.minX() < border->minX()
               ? std::optional(leftmost->windowID)
               : std::nullopt;
}

} // namespace

void ControlItemManager::arrangeAndReapply(RuleKeys hidden, RuleKeys alwaysHidden) {
    lastArrangement_.emplace(hidden, alwaysHidden);
    enqueueLayout([self = shared_from_this(), hidden = std::move(hidden),
                   alwaysHidden = std::move(alwaysHidden)] {
        return self->arrangeJob(hidden, alwaysHidden);
    });
}

void ControlItemManager::showNewlyVisible(std::vector<MenuBarItem> items) {
    // Nothing can be moved on the hosted bar; a new item stays where the system put it.
    if (barKind_ == BarKind::hosted) {
        return;
    }
    enqueueLayout([self = shared_from_this(), items = std::move(items)] {
        return self->newlyVisibleJob(items);
    });
}

void ControlItemManager::enforce(const MenuBarItem& item, MenuBarSection section) {
    enforce(ruleKey(item), item.windowID, section);
}

void ControlItemManager::enforce(std::optional<std::string> ruleKey, WindowID fallbackWID,
                                 MenuBarSection section) {
    if (barKind_ == BarKind::hosted) {
        hostedEnforce(ruleKey, section);
        return;
    }
    enqueueLayout([self = shared_from_this(), ruleKey = std::move(ruleKey), fallbackWID, section] {
        return self->enforceJob(ruleKey, fallbackWID, section);
    });
}

// Sleeps that fail change nothing here: layout jobs are never cancelled, and a short wait does
// no harm.
Task<> ControlItemManager::arrangeJob(RuleKeys hidden, RuleKeys alwaysHidden) {
    co_await sleep(deps_.scheduler, kSettleBeforeArranging);
    // Our items have had time to be placed: the bar shows now which kind it is.
    updateBarKind();
    if (barKind_ == BarKind::hosted) {
        co_await hostedArrangement(hidden.empty() && alwaysHidden.empty());
        co_return;
    }
    setAllRevealed(true);
    co_await sleep(deps_.scheduler, kSettleAfterRevealing);
    co_await orderControlItems();
    // Ordering drags a separator past its neighbours, and a drop can land one item further than
    // aimed: what that leaves between the separators goes back where it belongs first.
    co_await moveCaughtItemsOut();
    for (const std::string& key : alwaysHidden) {
        co_await place(key, 0, MenuBarSection::alwaysHidden);
    }
    // A key in both sets was placed always-hidden above, and stays there.
    for (const std::string& key : hidden) {
        if (!alwaysHidden.contains(key)) {
            co_await place(key, 0, hiddenOrInFront(key));
        }
    }
    co_await placeMisplacedVisibleItems();
    // The steps above trust each drag's own landing test, which only asks whether the item is
    // past its anchor, not whether it went too far: one round checks every zone and repairs.
    co_await checkAndRepair();
    // What is in the menu bar now has been placed; only later arrivals are new.
    deps_.enforcer.seedFromCurrentItems();
    const bool nothingToHide = hidden.empty() && alwaysHidden.empty();
    // Borders left out of order (moves not allowed, or not landed) would hide the toggle itself.
    setAllRevealed((nothingToHide && !deps_.preferences.collapseAtLaunch()) ||
                   !controlItemsInOrder());
    if (deps_.arranged) {
        deps_.arranged();
    }
}

// Restores the order always-separator, separator, toggle, wherever the system put them.
Task<> ControlItemManager::orderControlItems() {
    // One reading finds our items and whatever stands left of the always-separator.
    const auto [controls, leftmost] = [this] {
        const auto items = mainDisplayItems();
        const auto found = controlWindows(items);
        return std::pair{found, found.alwaysSeparator
                                    ? leftmostOtherItem(items, frameOf(*found.alwaysSeparator))
                                    : std::nullopt};
    }();
    if (!controls.alwaysSeparator || !controls.separator || !controls.toggle) {
        deps_.log.log(kControlItemsMissing);
    }
    // The always-separator goes leftmost, so that the always-hidden zone starts empty and holds
    // only what the rules put there.
    if (!leftmost) {
        co_await orderSeparatorAndToggle(controls);
        co_return;
    }
    co_await performMove(*controls.alwaysSeparator, ItemMover::Side::left, *leftmost);
    // The move has shifted the bar: it is read again.
    co_await orderSeparatorAndToggle(controlWindows(mainDisplayItems()));
}

Task<> ControlItemManager::orderSeparatorAndToggle(ControlWindows controls) {
    // Each check reads the frames afresh: the move before it may have shifted both.
    auto isLeftOf = [this](std::optional<WindowID> a, std::optional<WindowID> b) {
        const auto aFrame = a ? frameOf(*a) : std::nullopt;
        const auto bFrame = b ? frameOf(*b) : std::nullopt;
        return aFrame && bFrame && aFrame->minX() < bFrame->minX();
    };
    if (isLeftOf(controls.separator, controls.alwaysSeparator)) {
        co_await performMove(*controls.separator, ItemMover::Side::right,
                             *controls.alwaysSeparator);
    }
    if (isLeftOf(controls.toggle, controls.separator)) {
        co_await performMove(*controls.toggle, ItemMover::Side::right, *controls.separator);
    }
}

// The bar as it was before a job revealed everything.
void ControlItemManager::restoreBar(bool wasExpanded, bool wasAllRevealed) {
    setAllRevealed(wasAllRevealed);
    if (wasExpanded && !wasAllRevealed) {
        setExpanded(true);
    }
}

// Auto items wait in the hidden zone, except those of the application in front: hiding them
// only for the front application monitor to show them again right after would cost two drags
// each, and leave them hidden if the monitor had shown them already.
MenuBarSection ControlItemManager::hiddenOrInFront(const std::string& key) const {
    const auto front = deps_.workspace.frontmostBundleID();
    const bool shown =
        ruledSection(deps_.preferences.sectionByBundleID(), key) == MenuBarSection::dynamic &&
        front && appliesToApplication(key, *front);
    return shown ? MenuBarSection::visible : MenuBarSection::hidden;
}

Task<> ControlItemManager::newlyVisibleJob(std::vector<MenuBarItem> items) {
    const bool wasExpanded = isExpanded_;
    setAllRevealed(true);
    co_await sleep(deps_.scheduler, kSettleBeforePlacing);
    for (const MenuBarItem& item : items) {
        co_await place(ruleKey(item), item.windowID, MenuBarSection::visible);
    }
    // The other new items (ruled ones, untitled ones, an application's second item) and any
    // drop that went too far.
    co_await checkAndRepair();
    // When the bar was open, the always-hidden zone stays revealed too until the next collapse.
    if (!wasExpanded) {
        setAllRevealed(!controlItemsInOrder());
    }
}

Task<> ControlItemManager::enforceJob(std::optional<std::string> ruleKey, WindowID fallbackWID,
                                      MenuBarSection section) {
    // Decided before revealing, which changes `isExpanded`.
    const bool collapseAfterwards = section != MenuBarSection::visible || !isExpanded_;
    setAllRevealed(true);
    co_await sleep(deps_.scheduler, kSettleBeforePlacing);
    co_await place(std::move(ruleKey), fallbackWID, section);
    co_await checkAndRepair();
    if (collapseAfterwards) {
        setAllRevealed(!controlItemsInOrder());
    }
}

} // namespace quillet
