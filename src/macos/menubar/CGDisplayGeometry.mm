#include "macos/menubar/CGDisplayGeometry.h"

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>

#include <algorithm>
#include <type_traits>

namespace quillet::macos {

namespace {

static_assert(std::is_same_v<DisplayID, CGDirectDisplayID>);

// NSRect and CGRect are one type on a Mac; taking either keeps this independent of that.
template <typename PlatformRect> Rect rectFrom(const PlatformRect& rect) {
    return makeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

Screen screenFrom(NSScreen* screen) {
    return {rectFrom([screen frame]), rectFrom([screen visibleFrame]), [screen backingScaleFactor]};
}

} // namespace

Rect CGDisplayGeometry::mainDisplayBounds() const {
    return rectFrom(CGDisplayBounds(CGMainDisplayID()));
}

std::uint32_t CGDisplayGeometry::activeDisplayCount() const {
    std::uint32_t count = 0;
    if (CGGetActiveDisplayList(0, nullptr, &count) != kCGErrorSuccess) {
        return 0;
    }
    return count;
}

std::vector<DisplayID> CGDisplayGeometry::activeDisplays(std::uint32_t capacity) const {
    std::vector<DisplayID> displays(capacity);
    std::uint32_t count = 0;
    if (CGGetActiveDisplayList(capacity, displays.data(), &count) != kCGErrorSuccess) {
        return {};
    }
    // Only the first `count` slots were filled.
    displays.resize(std::min(count, capacity));
    return displays;
}

Rect CGDisplayGeometry::displayBounds(DisplayID display) const {
    return rectFrom(CGDisplayBounds(display));
}

std::vector<Screen> CGDisplayGeometry::screens() const {
    std::vector<Screen> result;
    for (NSScreen* screen in [NSScreen screens]) {
        result.push_back(screenFrom(screen));
    }
    return result;
}

std::optional<Screen> CGDisplayGeometry::mainScreen() const {
    NSScreen* screen = [NSScreen mainScreen];
    if (screen == nil) {
        return std::nullopt;
    }
    return screenFrom(screen);
}

Point CGDisplayGeometry::pointerLocation() const {
    const NSPoint location = [NSEvent mouseLocation];
    return {location.x, location.y};
}

double CGDisplayGeometry::statusBarThickness() const {
    return [[NSStatusBar systemStatusBar] thickness];
}

} // namespace quillet::macos
