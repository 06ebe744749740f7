#pragma once

#include "core/ports/Geometry.hpp"
#include "macos/support/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

#include <chrono>
#include <optional>

namespace quillet::macos {

// A timeout set on one element bounds only that element's messages (AXUIElement.h), so every
// element is given it before it is messaged.
inline void bound(AXUIElementRef element, std::chrono::milliseconds timeout) {
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

// "AXPosition" and "AXSize" as one rectangle, when both are there.
inline std::optional<Rect> copyFrame(AXUIElementRef element) {
    auto position = copyValueAttribute<CGPoint>(element, kAXPositionAttribute, kAXValueTypeCGPoint);
    auto size = copyValueAttribute<CGSize>(element, kAXSizeAttribute, kAXValueTypeCGSize);
    if (!position || !size) {
        return std::nullopt;
    }
    return makeRect(position->x, position->y, size->width, size->height);
}

// The element at `index` of an array of elements, borrowed from the array; null when the entry
// is not an element.
inline AXUIElementRef elementAt(CFArrayRef elements, CFIndex index) {
    CFTypeRef entry = CFArrayGetValueAtIndex(elements, index);
    if (entry == nullptr || CFGetTypeID(entry) != AXUIElementGetTypeID()) {
        return nullptr;
    }
    return static_cast<AXUIElementRef>(entry);
}

} // namespace quillet::macos
