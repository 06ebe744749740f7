#pragma once

#include "core/ports/Geometry.hpp"

#include <optional>
#include <vector>

namespace quillet {

class DisplayGeometry;
struct Screen;

// AppKit measures screen positions upward from the bottom of the primary screen (the one whose
// frame starts at the origin, else the first listed); the window server measures downward from
// its top. These turn AppKit's positions into the window server's; nothing when there is no
// screen to measure from.
std::optional<Point> windowServerPoint(const DisplayGeometry& displays, Point appKit);
std::optional<Rect> windowServerRect(const DisplayGeometry& displays, Rect appKit);

// Whether `appKit` lies in the menu bar of one of `screens`: the strip as high as the status bar
// at the top of a screen, in AppKit's coordinates.
bool isInAMenuBar(const std::vector<Screen>& screens, double statusBarThickness, Point appKit);

} // namespace quillet
