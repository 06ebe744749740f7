#include "macos/menubar/CGWindowListSource.h"

#include "macos/support/CFRef.h"
#import "macos/support/Strings.h"

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace quillet::macos {

namespace {

// The kCGWindow… key of a port key. The last case leaves the switch so that the function ends in
// a return while -Wswitch still flags a key added without a case.
CFStringRef keyName(WindowKey key) {
    switch (key) {
    case WindowKey::layer:
        return kCGWindowLayer;
    case WindowKey::bounds:
        return kCGWindowBounds;
    case WindowKey::ownerPID:
        return kCGWindowOwnerPID;
    case WindowKey::number:
        return kCGWindowNumber;
    case WindowKey::ownerName:
        return kCGWindowOwnerName;
    case WindowKey::name:
        break;
    }
    return kCGWindowName;
}

// The window server nests a dictionary only for the bounds; anything deeper is not read, so that
// no description, however odd, is walked deeper than this.
constexpr int kDictionaryDepth = 4;

WindowValue windowValue(CFTypeRef value, int depth = 0);

WindowValue unsupported() {
    return {WindowValue::Unsupported{}};
}

WindowValue numberValue(CFNumberRef number) {
    if (CFNumberIsFloatType(number)) {
        double real = 0;
        return CFNumberGetValue(number, kCFNumberDoubleType, &real) ? WindowValue{real}
                                                                    : unsupported();
    }
    static_assert(sizeof(std::int64_t) == sizeof(SInt64));
    std::int64_t integer = 0;
    return CFNumberGetValue(number, kCFNumberSInt64Type, &integer) ? WindowValue{integer}
                                                                   : unsupported();
}

WindowValue stringValue(CFStringRef string) {
    auto text = utf8String(string);
    return text ? WindowValue{std::move(*text)} : unsupported();
}

// Members whose key is not a string cannot be named by the core and are left out.
WindowValue dictionaryValue(CFDictionaryRef dictionary, int depth) {
    const auto count = static_cast<std::size_t>(CFDictionaryGetCount(dictionary));
    std::vector<const void*> keys(count);
    std::vector<const void*> values(count);
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), values.data());
    WindowValue::Dictionary members;
    members.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (keys[i] == nullptr || CFGetTypeID(keys[i]) != CFStringGetTypeID()) {
            continue;
        }
        if (auto name = utf8String(static_cast<CFStringRef>(keys[i]))) {
            members.push_back({std::move(*name), windowValue(values[i], depth + 1)});
        }
    }
    return {std::move(members)};
}

// A value of a window description, typed as the window server typed it.
WindowValue windowValue(CFTypeRef value, int depth) {
    if (value == nullptr) {
        return {};
    }
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFNumberGetTypeID()) {
        return numberValue(static_cast<CFNumberRef>(value));
    }
    if (type == CFBooleanGetTypeID()) {
        return {CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0};
    }
    if (type == CFStringGetTypeID()) {
        return stringValue(static_cast<CFStringRef>(value));
    }
    if (type == CFDictionaryGetTypeID()) {
        return depth < kDictionaryDepth
                   ? dictionaryValue(static_cast<CFDictionaryRef>(value), depth)
                   : unsupported();
    }
    return unsupported();
}

// One window description, read key by key. Borrows the dictionary from the list that holds it.
class DescriptionRecord final : public WindowRecord {
public:
    explicit DescriptionRecord(CFDictionaryRef description) : description_(description) {}

    WindowValue value(WindowKey key) const override {
        return windowValue(CFDictionaryGetValue(description_, keyName(key)));
    }

private:
    CFDictionaryRef description_;
};

// Hands every description of a copied window list to the visitor. A list that is missing, or
// that is not a list of dictionaries, cannot be read at all.
bool visitDescriptions(const CFRef<CFArrayRef>& list, const WindowListSource::Visitor& visit) {
    if (!list || CFGetTypeID(list.get()) != CFArrayGetTypeID()) {
        return false;
    }
    const CFIndex count = CFArrayGetCount(list.get());
    for (CFIndex i = 0; i < count; ++i) {
        CFTypeRef entry = CFArrayGetValueAtIndex(list.get(), i);
        if (entry == nullptr || CFGetTypeID(entry) != CFDictionaryGetTypeID()) {
            return false;
        }
    }
    for (CFIndex i = 0; i < count; ++i) {
        visit(
            DescriptionRecord(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(list.get(), i))));
    }
    return true;
}

} // namespace

bool CGWindowListSource::visitWindowList(const Visitor& visit) const {
    // Every window, on screen or not, except desktop elements.
    CFRef<CFArrayRef> list(
        CGWindowListCopyWindowInfo(kCGWindowListExcludeDesktopElements, kCGNullWindowID));
    return visitDescriptions(list, visit);
}

bool CGWindowListSource::visitWindowDescription(WindowID window, const Visitor& visit) const {
    CFRef<CFArrayRef> list(CGWindowListCopyWindowInfo(kCGWindowListOptionIncludingWindow, window));
    return visitDescriptions(list, visit);
}

} // namespace quillet::macos
