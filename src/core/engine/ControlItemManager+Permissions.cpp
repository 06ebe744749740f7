// Arranging without the privacy grants: our own items found when the window list withholds
// their titles (no Screen Recording), and an arrangement that waits for Accessibility.

#include "core/engine/ControlItemManager.hpp"

#include <algorithm>
#include <string>

namespace quillet {

std::vector<MenuBarItem> ControlItemManager::mainDisplayItems() const {
    return mainDisplayItems(readBar());
}

std::vector<MenuBarItem> ControlItemManager::mainDisplayItems(const BarReading& bar) const {
    return enumerator_.mainDisplayItems(bar.raw);
}

bool ControlItemManager::controlItemsInOrder() const {
    return controlItemsInOrder(mainDisplayItems());
}

bool ControlItemManager::controlItemsInOrder(const std::vector<MenuBarItem>& items) const {
    const auto controls = controlFrames(items);
    // Missing items cannot be ordered; there is nothing to repair then.
    if (controls.size() < 3) {
        return true;
    }
    return controls.at(kAlwaysSeparatorName).minX() < controls.at(kSeparatorName).minX() &&
           controls.at(kSeparatorName).minX() < controls.at(kToggleName).minX();
}

bool ControlItemManager::collapseKeepsToggle() const {
    if (barKind_ == BarKind::hosted) {
        return hostedCollapseKeepsToggle(currentHostedBar());
    }
    // The always-separator may be off the screen already; only these two matter here.
    const auto controls = controlFrames(mainDisplayItems());
    const auto separator = controls.find(kSeparatorName);
    const auto toggle = controls.find(kToggleName);
    return separator == controls.end() || toggle == controls.end() ||
           separator->second.minX() < toggle->second.minX();
}

void ControlItemManager::rearrangeAfterGrant() {
    // Every placement since the grant went missing was skipped; the full arrangement puts every
    // ruled item in its zone and brings every other one into view, so it stands in for them all.
    if (lastArrangement_) {
        auto [hidden, alwaysHidden] = *lastArrangement_;
        arrangeAndReapply(std::move(hidden), std::move(alwaysHidden));
    }
}

} // namespace quillet
