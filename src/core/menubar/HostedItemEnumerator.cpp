#include "core/menubar/HostedItemEnumerator.hpp"

#include "core/menubar/AXResolver.hpp"
#include "core/menubar/SystemItemCatalog.hpp"
#include "core/ports/Workspace.hpp"

#include <unordered_set>

namespace quillet {

BarKind HostedItemEnumerator::barKind(Pid ownPID, int osMajorVersion) const {
    const bool hostRuns = !workspace_.runningProcesses(std::string(kMenuBarHostBundleID)).empty();
    return detectBarKind(observeBar(windows_, ownPID, osMajorVersion, hostRuns, 0));
}

HostedMenuBarItem HostedItemEnumerator::describe(const HostedItem& slot, Pid ownPID) const {
    HostedMenuBarItem item{slot, "", std::nullopt, "", slot.owner == ownPID};
    if (auto application = workspace_.runningApplication(slot.owner)) {
        item.ownerName = application->name;
        item.bundleID = application->bundleID;
    }
    if (auto system = SystemItemCatalog::infoForMenuExtra(slot.identifier)) {
        item.displayLabel = system->displayName;
    } else if (!slot.identifier.empty()) {
        item.displayLabel = slot.identifier;
    } else if (auto name =
                   item.bundleID ? identity_.appDisplayName(*item.bundleID) : std::nullopt) {
        item.displayLabel = *name;
    } else if (!item.ownerName.empty()) {
        item.displayLabel = item.ownerName;
    } else {
        item.displayLabel = "Unknown (pid " + std::to_string(slot.owner) + ")";
    }
    return item;
}

std::optional<std::vector<HostedMenuBarItem>> HostedItemEnumerator::rawItems(Pid ownPID) const {
    auto slots = host_.hostedItems(AXResolver::kMessagingTimeout);
    if (!slots) {
        return std::nullopt;
    }
    std::vector<HostedMenuBarItem> items;
    for (const HostedItem& slot : *slots) {
        items.push_back(describe(slot, ownPID));
    }
    return items;
}

std::vector<MenuBarItem> HostedItemEnumerator::applicationItems(Pid ownPID) const {
    std::vector<MenuBarItem> items;
    for (const HostedMenuBarItem& item :
         logicalItems(rawItems(ownPID).value_or(std::vector<HostedMenuBarItem>{}))) {
        if (item.bundleID && !SystemItemCatalog::infoForMenuExtra(item.slot.identifier)) {
            items.push_back(asMenuBarItem(item));
        }
    }
    return items;
}

std::vector<MenuBarItem> HostedItemEnumerator::itemsInTheBar(Pid ownPID) const {
    std::vector<MenuBarItem> items;
    for (const HostedMenuBarItem& item :
         rawItems(ownPID).value_or(std::vector<HostedMenuBarItem>{})) {
        if (!item.isOwn && item.slot.frame) {
            items.push_back(asMenuBarItem(item));
        }
    }
    return items;
}

MenuBarItem asMenuBarItem(const HostedMenuBarItem& item) {
    MenuBarItem listed;
    listed.frame = item.slot.frame.value_or(Rect{});
    listed.ownerPID = item.slot.owner;
    listed.ownerName = item.ownerName;
    listed.bundleID = item.bundleID;
    listed.displayLabel = item.displayLabel;
    listed.systemInfo = SystemItemCatalog::infoForMenuExtra(item.slot.identifier);
    listed.isOwnControlItem = item.isOwn;
    return listed;
}

std::vector<HostedMenuBarItem>
HostedItemEnumerator::logicalItems(std::vector<HostedMenuBarItem> raw) {
    // Every display shows the same items, so the key, not the slot, is the item.
    std::unordered_set<std::string> seen;
    std::vector<HostedMenuBarItem> logical;
    for (HostedMenuBarItem& item : raw) {
        const std::string key = !item.slot.identifier.empty() ? "i:" + item.slot.identifier
                                : item.bundleID               ? "b:" + *item.bundleID
                                                : "p:" + std::to_string(item.slot.owner);
        if (!item.isOwn && seen.insert(key).second) {
            logical.push_back(std::move(item));
        }
    }
    return logical;
}

} // namespace quillet
