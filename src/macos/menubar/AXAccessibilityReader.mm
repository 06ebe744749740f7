#include "macos/menubar/AXAccessibilityReader.h"

#include "macos/support/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <chrono>

namespace quillet::macos {

namespace {

// A timeout set on one element bounds only that element's messages (AXUIElement.h), so every
// element is given it before it is messaged.
void bound(AXUIElementRef element, std::chrono::milliseconds timeout) {
    AXUIElementSetMessagingTimeout(element, std::chrono::duration<float>(timeout).count());
}

// The element's attribute when it is present and of the CF type `type`; the copy is owned.
template <typename Ref>
CFRef<Ref> copyAttribute(AXUIElementRef element, CFStringRef attribute, CFTypeID type) {
    CFTypeRef value = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(element, attribute, &value);
    if (value == nullptr) {
        return nullptr;
    }
    if (error != kAXErrorSuccess || CFGetTypeID(value) != type) {
        CFRelease(value);
        return nullptr;
    }
    return CFRef<Ref>(static_cast<Ref>(value));
}

// An attribute held in an AXValue of type `valueType` ("AXPosition", "AXSize").
template <typename Value>
std::optional<Value> copyValueAttribute(AXUIElementRef element, CFStringRef attribute,
                                        AXValueType valueType) {
    auto value = copyAttribute<AXValueRef>(element, attribute, AXValueGetTypeID());
    Value result{};
    if (!value || !AXValueGetValue(value.get(), valueType, &result)) {
        return std::nullopt;
    }
    return result;
}

} // namespace

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
    CFTypeRef first = CFArrayGetValueAtIndex(children.get(), 0);
    if (first == nullptr || CFGetTypeID(first) != AXUIElementGetTypeID()) {
        return std::nullopt;
    }
    auto child = static_cast<AXUIElementRef>(first);
    bound(child, messagingTimeout);
    auto position = copyValueAttribute<CGPoint>(child, kAXPositionAttribute, kAXValueTypeCGPoint);
    auto size = copyValueAttribute<CGSize>(child, kAXSizeAttribute, kAXValueTypeCGSize);
    if (!position || !size) {
        return std::nullopt;
    }
    return makeRect(position->x, position->y, size->width, size->height);
}

} // namespace quillet::macos
