#include "core/engine/VisibleItemEnforcer.hpp"

#include "core/engine/ControlItemManager.hpp"
#include "core/engine/RuleKey.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <algorithm>
#include <cassert>
#include <utility>
#include <vector>

namespace quillet {

VisibleItemEnforcer::VisibleItemEnforcer(Dependencies dependencies)
    : deps_(std::move(dependencies)),
      enumerator_(deps_.windows, deps_.displays, deps_.workspace, deps_.ownItems) {}

VisibleItemEnforcer::~VisibleItemEnforcer() {
    stop();
}

void VisibleItemEnforcer::start() {
    assert(deps_.scheduler.isMainThread());
    if (observer_) {
        return;
    }
    observer_ =
        deps_.workspace.addObserver(WorkspaceEvent::didLaunchApplication, [self = anchor_.ref()] {
            if (auto* enforcer = self.get()) {
                enforcer->scheduleScan();
            }
        });
}

void VisibleItemEnforcer::stop() {
    if (observer_) {
        deps_.workspace.removeObserver(*std::exchange(observer_, std::nullopt));
    }
    scanTask_.cancel();
    scanTask_ = {};
}

void VisibleItemEnforcer::seedFromCurrentItems() {
    knownKeys_.clear();
    auto current = currentItems();
    for (auto& [key, item] : current.keyed) {
        knownKeys_.insert(std::move(key));
    }
    knownWindows_ = std::move(current.windows);
    seeded_ = true;
}

void VisibleItemEnforcer::scheduleScan() {
    assert(deps_.scheduler.isMainThread());
    // A later launch restarts the series, timed from itself.
    scanTask_.cancel();
    scanTask_ = TaskHandle::spawn(deps_.scheduler, scanSeries(deps_.scheduler, anchor_.ref()));
}

// Items of a launching application appear over a second or two, so one scan is not enough.
// Each wait runs from the end of the scan before it.
Task<> VisibleItemEnforcer::scanSeries(Scheduler& scheduler,
                                       WeakAnchor<VisibleItemEnforcer>::Ref self) {
    Duration previous{0};
    for (const Duration offset : kScanOffsets) {
        // Cancelled by a newer launch or by stop(): this series is over.
        const bool completed = co_await sleep(scheduler, offset - previous);
        if (!completed) {
            co_return;
        }
        auto* enforcer = self.get();
        if (!enforcer) {
            co_return;
        }
        enforcer->promoteNewVisibleItems();
        previous = offset;
    }
}

void VisibleItemEnforcer::promoteNewVisibleItems() {
    if (!seeded_) {
        return;
    }
    std::vector<MenuBarItem> promoted;
    std::set<std::string> current;
    auto [keyed, windows] = currentItems();
    for (auto& [key, item] : keyed) {
        current.insert(key);
        if (knownKeys_.contains(key)) {
            continue;
        }
        // An item with a rule of its own is the arrangement's business.
        if (ruledSection(deps_.preferences.sectionByBundleID(), key) == MenuBarSection::visible) {
            promoted.push_back(std::move(item));
        }
    }
    // Keys that vanished are forgotten, so an application that quits and comes back is new again.
    knownKeys_ = std::move(current);
    const bool newWindows = std::any_of(windows.begin(), windows.end(), [&](WindowID window) {
        return !knownWindows_.contains(window);
    });
    knownWindows_ = std::move(windows);
    auto manager = deps_.controlItemManager ? deps_.controlItemManager() : nullptr;
    if (!manager) {
        return;
    }
    // Showing the new items ends with a check of every zone, which places the other new items
    // by their rules; without items to show, the check alone.
    if (!promoted.empty()) {
        manager->showNewlyVisible(std::move(promoted));
    } else if (newWindows) {
        manager->repairZones();
    }
}

VisibleItemEnforcer::Current VisibleItemEnforcer::currentItems() const {
    Current current;
    auto raw = enumerator_.rawItems(deps_.ownPID);
    for (const MenuBarItem& item : raw) {
        if (!item.isOwnControlItem) {
            current.windows.insert(item.windowID);
        }
    }
    std::set<std::string> keys;
    for (auto& item : enumerator_.logicalItems(std::move(raw))) {
        auto key = ruleKey(item);
        if (key && keys.insert(*key).second) {
            current.keyed.emplace_back(std::move(*key), std::move(item));
        }
    }
    return current;
}

} // namespace quillet
