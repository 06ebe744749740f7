// Checking where the drags really landed, and repairing what they left in the wrong zone.
//
// A drag's own landing test only asks whether the item is past its anchor, and a drop can land
// an item further than aimed (how far depends on how the menu bar drops a dragged item, which
// is not known for sure): at a zone border that is the wrong zone. So the layout jobs end by
// reading every item's place again and repairing what is wrong, in a bounded number of drags.

#include "core/engine/ControlItemManager.hpp"

#include "core/engine/RuleKey.hpp"
#include "core/menubar/SystemItemCatalog.hpp"
#include "core/ports/InputInjector.hpp"
#include "core/ports/LogSink.hpp"
#include "core/ports/Workspace.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <algorithm>
#include <chrono>
#include <string>

namespace quillet {

using namespace std::chrono_literals;

namespace {

// A bar still wrong after a repair is tried again this much later, a few times in a row: what
// spoiled it (an application quitting mid-drag, a user dragging) is usually over by then.
constexpr Duration kRepairRetryDelay = 2000ms;
constexpr int kMaxRepairRetries = 3;
// While the user holds the mouse button no drag can be made; wait for it, but not for ever.
constexpr Duration kButtonPoll = 500ms;
constexpr int kMaxButtonPolls = 120;

MenuBarSection zoneAt(const Rect& item, const Rect& alwaysSeparator, const Rect& separator) {
    if (item.midX() < alwaysSeparator.midX()) {
        return MenuBarSection::alwaysHidden;
    }
    return item.midX() < separator.midX() ? MenuBarSection::hidden : MenuBarSection::visible;
}

} // namespace

std::optional<MenuBarSection>
ControlItemManager::zoneFor(const MenuBarItem& item, const std::optional<std::string>& key) const {
    // Our spacers stay where the user put them; the control items are checked by their order.
    if (item.isOwnControlItem) {
        return std::nullopt;
    }
    auto zone = ruledSection(deps_.preferences.sectionByBundleID(), key);
    if (zone == MenuBarSection::dynamic) {
        zone = hiddenOrInFront(*key);
    }
    // Protected system items stay where they are, as placing them would refuse to move them.
    auto info = key ? SystemItemCatalog::info(*key) : std::nullopt;
    if (!info) {
        info = item.systemInfo;
    }
    if (info && (!info->movable || (!info->hideable && zone != MenuBarSection::visible))) {
        return std::nullopt;
    }
    return zone;
}

// Items the window list cannot name (an untitled window of an application) can still be the
// one that a rule's application reports: the same resolution as placing them. Only rules that
// name no listed window can be about such an item.
std::map<WindowID, std::string>
ControlItemManager::windowsNamedByRules(const std::vector<MenuBarItem>& items,
                                        const BarReading& bar) const {
    std::set<std::string> listed;
    for (const MenuBarItem& item : items) {
        if (auto key = ruleKey(item)) {
            listed.insert(std::move(*key));
        }
    }
    // Where each application owns its items' windows (before macOS 26) the owner names all of
    // them, an application's second item too. Under macOS 26 one process owns them all, ours
    // included, so an owner is trusted only while our own windows are listed as ours.
    const bool ownersNameApplications = std::ranges::any_of(items, [&](const MenuBarItem& item) {
        return item.isOwnControlItem && item.ownerPID == deps_.ownPID;
    });
    std::map<WindowID, std::string> named;
    const auto displays = enumerator_.activeDisplayBounds();
    for (const auto& [key, section] : deps_.preferences.sectionByBundleID()) {
        if (listed.contains(key)) {
            continue;
        }
        if (auto resolved = resolve(key, 0, bar)) {
            named.emplace(resolved->windowID, key);
        }
        for (WindowID window : untitledWindowsReportedFor(key, items, displays)) {
            named.emplace(window, key);
        }
        const auto owners =
            ownersNameApplications ? deps_.workspace.runningProcesses(key) : std::vector<Pid>{};
        for (const MenuBarItem& item : items) {
            if (!item.windowName && std::ranges::find(owners, item.ownerPID) != owners.end()) {
                named.emplace(item.windowID, key);
            }
        }
    }
    return named;
}

// The frames of our control items among the items of one reading of the bar, as read by
// `mainDisplayItems`.
std::map<std::string_view, Rect>
ControlItemManager::controlFrames(const std::vector<MenuBarItem>& items) const {
    std::map<std::string_view, Rect> frames;
    for (const MenuBarItem& item : items) {
        for (std::string_view name : {kAlwaysSeparatorName, kSeparatorName, kToggleName}) {
            if (item.isOwnControlItem && item.windowName == name && !frames.contains(name)) {
                frames.emplace(name, item.frame);
            }
        }
    }
    return frames;
}

std::vector<ControlItemManager::Misplaced> ControlItemManager::misplacedItems() const {
    const BarReading bar = readBar();
    return misplacedItems(bar, mainDisplayItems(bar));
}

// One reading of the bar serves the whole check: it runs after every layout job. Our own windows
// must be known as ours even without their titles (as mainDisplayItems marks them): a border
// taken for an unruled item of another application would be "repaired" into view, across the
// other border, and every zone after it would be wrong.
std::vector<ControlItemManager::Misplaced>
ControlItemManager::misplacedItems(const BarReading& bar,
                                   const std::vector<MenuBarItem>& items) const {
    const auto controls = controlFrames(items);
    const auto border = controls.find(kAlwaysSeparatorName);
    const auto separator = controls.find(kSeparatorName);
    if (border == controls.end() || separator == controls.end()) {
        return {};
    }
    std::optional<std::map<WindowID, std::string>> named;
    std::vector<Misplaced> misplaced;
    for (const MenuBarItem& item : items) {
        auto key = ruleKey(item);
        if (!key && !item.isOwnControlItem) {
            if (!named) {
                named = windowsNamedByRules(items, bar);
            }
            if (auto found = named->find(item.windowID); found != named->end()) {
                key = found->second;
            }
        }
        const auto zone = zoneFor(item, key);
        const auto current = zoneAt(item.frame, border->second, separator->second);
        if (zone && *zone != current) {
            misplaced.push_back({item, *zone, current});
        }
    }
    return misplaced;
}

// Ordering the control items drags the separators past their neighbours; an item it leaves
// between them that belongs in view goes back now, before the rules are applied around it.
Task<> ControlItemManager::moveCaughtItemsOut() {
    // One reading finds the separator and the items caught left of it.
    const auto [separator, misplaced] = [this] {
        const BarReading bar = readBar();
        const auto items = mainDisplayItems(bar);
        const auto found = controlWindows(items).separator;
        return std::pair{found, found ? misplacedItems(bar, items) : std::vector<Misplaced>{}};
    }();
    for (const Misplaced& caught : misplaced) {
        if (caught.current == MenuBarSection::hidden && caught.zone == MenuBarSection::visible) {
            co_await performMove(caught.item.windowID, ItemMover::Side::right, *separator);
        }
    }
}

// Dropped left of the separator, an item can overshoot a narrow always-separator into the
// always-hidden zone. Stretched to its hiding length the always-separator is wider than any
// overshoot, and whatever lies left of it is out of the way, so the drop stays between the two.
Task<> ControlItemManager::placeInHiddenZone(WindowID window) {
    const auto separator = ownItem(kSeparatorName);
    if (!separator) {
        co_return;
    }
    alwaysSeparatorItem_->setLength(kHidingLength);
    co_await sleep(deps_.scheduler, kSettleAfterRevealing);
    co_await performMove(window, ItemMover::Side::left, separator->windowID);
    alwaysSeparatorItem_->setLength(kVariableStatusItemLength);
    co_await sleep(deps_.scheduler, kSettleAfterRevealing);
}

// At most two drags: one out of the always-hidden zone, which is off the screen while the
// always-separator is stretched, and one into the hidden zone.
Task<> ControlItemManager::repairItem(const Misplaced& misplaced) {
    const ControlWindows controls = controlWindows(mainDisplayItems());
    const auto alwaysSeparator = controls.alwaysSeparator;
    const auto separator = controls.separator;
    if (!alwaysSeparator || !separator) {
        co_return;
    }
    const WindowID window = misplaced.item.windowID;
    switch (misplaced.zone) {
    case MenuBarSection::visible:
        co_await performMove(window, ItemMover::Side::right, *separator);
        break;
    case MenuBarSection::alwaysHidden:
        co_await performMove(window, ItemMover::Side::left, *alwaysSeparator);
        break;
    case MenuBarSection::hidden:
    case MenuBarSection::dynamic: {
        auto where = [&]() -> std::optional<MenuBarSection> {
            const auto item = frameOf(window);
            const auto border = frameOf(*alwaysSeparator);
            const auto edge = frameOf(*separator);
            return item && border && edge ? std::optional(zoneAt(*item, *border, *edge))
                                          : std::nullopt;
        };
        if (where() == MenuBarSection::alwaysHidden) {
            co_await performMove(window, ItemMover::Side::right, *alwaysSeparator);
        }
        if (where() == MenuBarSection::visible) {
            co_await placeInHiddenZone(window);
        }
        break;
    }
    }
}

void ControlItemManager::repairZones() {
    enqueueLayout([self = shared_from_this()] { return self->repairJob(); });
}

Task<bool> ControlItemManager::checkAndRepair() {
    // Without the grant nothing can move: the arrangement runs again once it is given.
    if (!moveAccess_.allowsMoves()) {
        co_return false;
    }
    // One round: each item found misplaced is repaired once, from a fresh reading of the bar,
    // which the check of the order serves too while the order needs no drag.
    auto check = checkBar();
    // A bar found in order with every item in its zone saw no drag since: it is still so.
    const bool nothingToDo = check.inOrder && check.misplaced.empty();
    if (!check.inOrder) {
        co_await orderSeparatorAndToggle(check.controls);
        check.misplaced = misplacedItems();
    }
    for (const Misplaced& misplaced : check.misplaced) {
        co_await repairItem(misplaced);
    }
    const auto left = nothingToDo ? 0 : problemsLeft();
    if (left == 0) {
        repairRetries_ = 0;
        co_return true;
    }
    if (repairRetries_ == kMaxRepairRetries) {
        repairRetries_ = 0;
        deps_.log.log("Quillet: " + std::to_string(left) +
                      " menu bar items could not be put into their zones");
        co_return false;
    }
    scheduleRepairRetry();
    co_return false;
}

ControlItemManager::BarCheck ControlItemManager::checkBar() const {
    const BarReading bar = readBar();
    const auto items = mainDisplayItems(bar);
    BarCheck check{controlItemsInOrder(items), controlWindows(items), {}};
    if (check.inOrder) {
        check.misplaced = misplacedItems(bar, items);
    }
    return check;
}

std::size_t ControlItemManager::problemsLeft() const {
    const BarReading bar = readBar();
    const auto items = mainDisplayItems(bar);
    return misplacedItems(bar, items).size() + (controlItemsInOrder(items) ? 0 : 1);
}

void ControlItemManager::scheduleRepairRetry() {
    if (retryTask_ && !retryTask_.isDone()) {
        return;
    }
    ++repairRetries_;
    retryTask_ = TaskHandle::spawn(deps_.scheduler,
                                   retryRepairAfterDelay(deps_.scheduler, weak_from_this()));
}

Task<> ControlItemManager::retryRepairAfterDelay(Scheduler& scheduler,
                                                 std::weak_ptr<ControlItemManager> self) {
    co_await sleep(scheduler, kRepairRetryDelay);
    for (int polls = 0; polls < kMaxButtonPolls; ++polls) {
        auto manager = self.lock();
        if (!manager || !manager->deps_.input.isLeftButtonDown()) {
            break;
        }
        manager.reset();
        co_await sleep(scheduler, kButtonPoll);
    }
    if (auto manager = self.lock()) {
        manager->repairZones();
    }
}

Task<> ControlItemManager::repairJob() {
    const bool wasExpanded = isExpanded_;
    const bool wasAllRevealed = isAllRevealed_;
    setAllRevealed(true);
    co_await sleep(deps_.scheduler, kSettleBeforePlacing);
    co_await checkAndRepair();
    restoreBar(wasExpanded, wasAllRevealed);
}

} // namespace quillet
