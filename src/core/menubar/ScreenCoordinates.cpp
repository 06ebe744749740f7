#include "core/menubar/ScreenCoordinates.hpp"

#include "core/ports/DisplayGeometry.hpp"

#include <algorithm>

namespace quillet {

namespace {

std::optional<double> primaryScreenHeight(const DisplayGeometry& displays) {
    const auto screens = displays.screens();
    if (screens.empty()) {
        return std::nullopt;
    }
    auto primary = std::find_if(screens.begin(), screens.end(), [](const Screen& screen) {
        return screen.frame.origin == Point{0, 0};
    });
    return (primary != screens.end() ? *primary : screens.front()).frame.height();
}

} // namespace

std::optional<Point> windowServerPoint(const DisplayGeometry& displays, Point appKit) {
    const auto height = primaryScreenHeight(displays);
    return height ? std::optional(Point{appKit.x, *height - appKit.y}) : std::nullopt;
}

std::optional<Rect> windowServerRect(const DisplayGeometry& displays, Rect appKit) {
    // The rectangle's top edge in AppKit is its top-left origin for the window server.
    const auto topLeft = windowServerPoint(displays, {appKit.minX(), appKit.maxY()});
    return topLeft ? std::optional(Rect{*topLeft, appKit.size}) : std::nullopt;
}

bool isInAMenuBar(const std::vector<Screen>& screens, double statusBarThickness, Point appKit) {
    return std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        const Rect& frame = screen.frame;
        return appKit.x >= frame.minX() && appKit.x < frame.maxX() &&
               appKit.y >= frame.maxY() - statusBarThickness && appKit.y <= frame.maxY();
    });
}

} // namespace quillet
