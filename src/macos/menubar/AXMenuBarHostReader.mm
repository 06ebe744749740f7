#include "macos/menubar/AXMenuBarHostReader.h"

#include "core/menubar/BarKind.hpp"
#include "macos/menubar/AXAttributes.h"
#import "macos/support/Strings.h"

#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>

namespace quillet::macos {

namespace {

// The host's process, if it runs (NSRunningApplication needs no grant).
std::optional<pid_t> hostProcess() {
    NSString* identifier = nsString(kMenuBarHostBundleID);
    NSArray<NSRunningApplication*>* running =
        [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier];
    if (running.count == 0) {
        return std::nullopt;
    }
    return [running.firstObject processIdentifier];
}

// One slot of a host window. The item's own element (the slot's first child) belongs to the
// process that made the item; a slot without one is taken as its own owner.
HostedItem readSlot(AXUIElementRef slot, std::size_t displayIndex,
                    std::chrono::milliseconds timeout) {
    bound(slot, timeout);
    HostedItem item;
    item.displayIndex = displayIndex;
    pid_t owner = 0;
    auto children = copyAttribute<CFArrayRef>(slot, kAXChildrenAttribute, CFArrayGetTypeID());
    AXUIElementRef child =
        children && CFArrayGetCount(children.get()) > 0 ? elementAt(children.get(), 0) : nullptr;
    if (child == nullptr || AXUIElementGetPid(child, &owner) != kAXErrorSuccess) {
        AXUIElementGetPid(slot, &owner);
    }
    item.owner = owner;
    if (auto identifier =
            copyAttribute<CFStringRef>(slot, kAXIdentifierAttribute, CFStringGetTypeID())) {
        item.identifier = utf8String(identifier.get()).value_or(std::string());
    }
    item.frame = copyFrame(slot);
    return item;
}

} // namespace

std::optional<std::vector<HostedItem>>
AXMenuBarHostReader::hostedItems(std::chrono::milliseconds messagingTimeout) const {
    // Without the grant the first message already fails.
    auto pid = hostProcess();
    if (!pid) {
        return std::nullopt;
    }
    CFRef<AXUIElementRef> host(AXUIElementCreateApplication(*pid));
    if (!host) {
        return std::nullopt;
    }
    bound(host.get(), messagingTimeout);
    auto windows = copyAttribute<CFArrayRef>(host.get(), kAXWindowsAttribute, CFArrayGetTypeID());
    if (!windows) {
        return std::nullopt;
    }
    std::vector<HostedItem> items;
    for (CFIndex w = 0; w < CFArrayGetCount(windows.get()); ++w) {
        AXUIElementRef window = elementAt(windows.get(), w);
        if (window == nullptr) {
            continue;
        }
        bound(window, messagingTimeout);
        auto slots = copyAttribute<CFArrayRef>(window, kAXChildrenAttribute, CFArrayGetTypeID());
        for (CFIndex s = 0; slots && s < CFArrayGetCount(slots.get()); ++s) {
            if (AXUIElementRef slot = elementAt(slots.get(), s)) {
                items.push_back(readSlot(slot, static_cast<std::size_t>(w), messagingTimeout));
            }
        }
    }
    return items;
}

} // namespace quillet::macos
