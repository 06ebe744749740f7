#pragma once

#include <cstdint>

namespace quillet {

// The window server's window number.
using WindowID = std::uint32_t;
// A process identifier.
using Pid = std::int32_t;

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

// A rectangle in global coordinates: origin at the top left of the main display, y grows
// downward, as the window server reports window bounds.
struct Rect {
    Point origin;
    Size size;

    double minX() const { return origin.x; }
    double minY() const { return origin.y; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midX() const { return origin.x + size.width / 2; }
    double midY() const { return origin.y + size.height / 2; }
    double width() const { return size.width; }
    double height() const { return size.height; }
    Point center() const { return {midX(), midY()}; }

    // Half-open on the far edges, like CGRectContainsPoint.
    bool contains(Point p) const {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

inline Rect makeRect(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

} // namespace quillet
