// Arranging without the privacy grants: our own items found when the window list withholds
// their titles (no Screen Recording), and an arrangement that waits for Accessibility.

#include "core/engine/ControlItemManager.hpp"

#include "core/menubar/ScreenCoordinates.hpp"

#include <algorithm>
#include <string>

namespace quillet {

// Without the Screen Recording grant the window list gives no titles for windows of other
// processes, and on macOS 26 Control Center owns every status item window, ours included, so
// neither title nor owner says which windows are ours. AppKit still knows where each of our
// items is (menus open under it). The window number of our button's window cannot stand in,
// since the window listed belongs to another process.
std::optional<MenuBarItem>
ControlItemManager::ownItemByFrame(std::string_view name,
                                   const std::vector<MenuBarItem>& items) const {
    const StatusItem* control = name == kAlwaysSeparatorName ? alwaysSeparatorItem_.get()
                                : name == kSeparatorName     ? separatorItem_.get()
                                : name == kToggleName        ? toggleItem_.get()
                                                             : nullptr;
    const auto appKitFrame = control ? control->windowFrame() : std::nullopt;
    const auto frame = appKitFrame ? windowServerRect(deps_.displays, *appKitFrame) : std::nullopt;
    if (!frame) {
        return std::nullopt;
    }
    const auto listed = itemListedAt(items, *frame);
    if (!listed) {
        return std::nullopt;
    }
    MenuBarItem own = items[*listed];
    own.isOwnControlItem = true;
    return own;
}

// Without titles (no Screen Recording on macOS 26) nothing in a reading of the bar says which
// windows are ours. Marked here, in the one reading every check goes through, our borders can be
// neither mistaken for another application's unruled items (which the checks pull into view)
// nor found by one check and missed by the next.
std::vector<MenuBarItem> ControlItemManager::mainDisplayItems() const {
    return mainDisplayItems(readBar());
}

std::vector<MenuBarItem> ControlItemManager::mainDisplayItems(const BarReading& bar) const {
    auto items = enumerator_.mainDisplayItems(bar.raw);
    for (std::string_view name : {kAlwaysSeparatorName, kSeparatorName, kToggleName}) {
        const bool titled = std::ranges::any_of(items, [&](const MenuBarItem& item) {
            return item.isOwnControlItem && item.windowName == name;
        });
        const auto untitled = titled ? std::nullopt : ownItemByFrame(name, items);
        if (!untitled) {
            continue;
        }
        for (MenuBarItem& item : items) {
            if (item.windowID == untitled->windowID) {
                item.isOwnControlItem = true;
                item.windowName = std::string(name);
            }
        }
    }
    return items;
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
