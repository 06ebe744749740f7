#include "core/triggers/ActiveAppMonitor.hpp"

#include "core/engine/ControlItemManager.hpp"
#include "core/engine/RuleKey.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <vector>

namespace quillet {

bool ActiveAppMonitor::matches(std::string_view ruleKey, std::string_view frontmost) {
    return appliesToApplication(ruleKey, frontmost);
}

void ActiveAppMonitor::start() {
    if (observer_) {
        return;
    }
    observer_ =
        workspace_.addObserver(WorkspaceEvent::didActivateApplication, [self = anchor_.ref()] {
            if (auto* monitor = self.get()) {
                monitor->refresh();
            }
        });
    refresh();
}

void ActiveAppMonitor::stop() {
    if (auto token = std::exchange(observer_, std::nullopt)) {
        workspace_.removeObserver(*token);
    }
}

void ActiveAppMonitor::showAgainAfterArrangement() {
    shown_.clear();
    refresh();
}

void ActiveAppMonitor::refresh() {
    const std::optional<std::string> frontmost = workspace_.frontmostBundleID();
    std::set<std::string> dynamicKeys;
    for (const auto& [key, section] : preferences_.sectionByBundleID()) {
        if (section == MenuBarSection::dynamic) {
            dynamicKeys.insert(key);
        }
    }
    auto inFront = [&](const std::string& key) { return frontmost && matches(key, *frontmost); };

    for (const auto& key : dynamicKeys) {
        if (inFront(key) && shown_.insert(key).second) {
            if (auto manager = manager_()) {
                manager->enforce(key, 0, MenuBarSection::visible);
            }
        }
    }
    const std::vector<std::string> wasShown(shown_.begin(), shown_.end());
    for (const auto& key : wasShown) {
        const bool isDynamic = dynamicKeys.contains(key);
        if (isDynamic && inFront(key)) {
            continue;
        }
        shown_.erase(key);
        // A key that is no longer dynamic is only forgotten: its rule change rearranges the zones.
        if (auto manager = isDynamic ? manager_() : nullptr) {
            manager->enforce(key, 0, MenuBarSection::hidden);
        }
    }
}

} // namespace quillet
