#pragma once

#include "core/ports/Geometry.hpp"

#include <optional>

namespace quillet {

class DisplayGeometry;

// AppKit measures screen positions upward from the bottom of the primary screen (the one whose
// frame starts at the origin, else the first listed); the window server measures downward from
// its top. These turn AppKit's positions into the window server's; nothing when there is no
// screen to measure from.
std::optional<Point> windowServerPoint(const DisplayGeometry& displays, Point appKit);
std::optional<Rect> windowServerRect(const DisplayGeometry& displays, Rect appKit);

} // namespace quillet
