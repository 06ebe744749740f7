#include "macos/menubar/AXAccessibilityReader.h"

#include "macos/menubar/AXAttributes.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <chrono>

namespace quillet::macos {

bool AXAccessibilityReader::isTrusted(bool prompt) const {
    if (!prompt) {
        return AXIsProcessTrusted() != 0;
    }
    NSDictionary* options =
        @{(__bridge id)kAXTrustedCheckOptionPrompt : (__bridge id)kCFBooleanTrue};
    return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options) != 0;
}

std::optional<Rect> AXAccessibilityReader::firstExtrasMenuBarChildFrame(
    Pid pid, std::chrono::milliseconds messagingTimeout) const {
    CFRef<AXUIElementRef> application(AXUIElementCreateApplication(pid));
    if (!application) {
        return std::nullopt;
    }
    bound(application.get(), messagingTimeout);
    auto extrasMenuBar = copyAttribute<AXUIElementRef>(application.get(), kAXExtrasMenuBarAttribute,
                                                       AXUIElementGetTypeID());
    if (!extrasMenuBar) {
        return std::nullopt;
    }
    bound(extrasMenuBar.get(), messagingTimeout);
    auto children =
        copyAttribute<CFArrayRef>(extrasMenuBar.get(), kAXChildrenAttribute, CFArrayGetTypeID());
    if (!children || CFArrayGetCount(children.get()) == 0) {
        return std::nullopt;
    }
    // Borrowed from `children`, which outlives every use below.
    AXUIElementRef child = elementAt(children.get(), 0);
    if (child == nullptr) {
        return std::nullopt;
    }
    bound(child, messagingTimeout);
    return copyFrame(child);
}

} // namespace quillet::macos
