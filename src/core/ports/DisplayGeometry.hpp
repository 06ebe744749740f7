#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace quillet {

using DisplayID = std::uint32_t;

// A screen as AppKit describes it: bottom-left origin, y grows upward.
struct Screen {
    Rect frame;
    Rect visibleFrame;
    double backingScaleFactor = 1.0;
    friend bool operator==(const Screen&, const Screen&) = default;
};

// Display geometry in both of the platform's coordinate systems: the window server's (top-left
// origin, for displays and windows) and AppKit's (bottom-left origin, for screens and the pointer).
class DisplayGeometry {
public:
    virtual ~DisplayGeometry() = default;

    // Window-server coordinates.
    virtual Rect mainDisplayBounds() const = 0;
    virtual std::uint32_t activeDisplayCount() const = 0;
    // At most `capacity` identifiers of the active displays, in the window server's order.
    virtual std::vector<DisplayID> activeDisplays(std::uint32_t capacity) const = 0;
    virtual Rect displayBounds(DisplayID display) const = 0;

    // AppKit coordinates.
    virtual std::vector<Screen> screens() const = 0;
    virtual std::optional<Screen> mainScreen() const = 0;
    virtual Point pointerLocation() const = 0;
    virtual double statusBarThickness() const = 0;
};

} // namespace quillet
