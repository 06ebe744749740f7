#pragma once

#include "core/menubar/BarKind.hpp"
#include "core/menubar/IdentityResolver.hpp"
#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/MenuBarHostReader.hpp"

#include <optional>
#include <string>
#include <vector>

namespace quillet {

class WindowListSource;
class Workspace;

// One slot of the hosted bar with what Quillet makes of it: whose item it is and the name a
// user recognises.
struct HostedMenuBarItem {
    HostedItem slot;
    std::string ownerName;
    std::optional<std::string> bundleID;
    std::string displayLabel;
    bool isOwn = false;
};

// The items of the hosted bar of macOS 27, which only the host's accessibility tree lists, and
// which bar this is. Nothing is cached: every call reads afresh.
class HostedItemEnumerator {
public:
    HostedItemEnumerator(const MenuBarHostReader& host, const WindowListSource& windows,
                         const Workspace& workspace)
        : host_(host), windows_(windows), workspace_(workspace), identity_(workspace) {}

    // The bar before any status item of ours exists (as in the diagnostic modes): the version
    // and the host decide, as no item can show.
    BarKind barKind(Pid ownPID, int osMajorVersion) const;

    // Every slot of every host window, in the host's order; nullopt when the tree cannot be
    // read (no host, no trust, no answer).
    std::optional<std::vector<HostedMenuBarItem>> rawItems(Pid ownPID) const;
    // One entry per system item, application or unnamed process, ours left out, in first-seen
    // order (left to right on the host's first window, items in its overflow first).
    static std::vector<HostedMenuBarItem> logicalItems(std::vector<HostedMenuBarItem> raw);

    // The items a user can rule on the hosted bar, one per application, as the rest of Quillet
    // reads items: Apple's menu extras are left out, as no rule reaches them there.
    std::vector<MenuBarItem> applicationItems(Pid ownPID) const;
    // The items with a place in the bar (not in its overflow menu), ours left out, in the host's
    // order.
    std::vector<MenuBarItem> itemsInTheBar(Pid ownPID) const;

private:
    HostedMenuBarItem describe(const HostedItem& slot, Pid ownPID) const;

    const MenuBarHostReader& host_;
    const WindowListSource& windows_;
    const Workspace& workspace_;
    IdentityResolver identity_;
};

// A slot as the rest of Quillet reads an item. The hosted bar has no item windows, so the window
// number stays 0; a slot in the overflow menu has an empty frame.
MenuBarItem asMenuBarItem(const HostedMenuBarItem& item);

} // namespace quillet
