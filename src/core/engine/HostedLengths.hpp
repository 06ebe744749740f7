#pragma once

#include "core/ports/Geometry.hpp"

#include <cstddef>
#include <vector>

namespace quillet {

// How long our separators may be on the hosted menu bar (macOS 27), where a status item is not
// clamped but dropped from the bar once its backing window (the length plus the item's chrome)
// reaches half the width of the display it is drawn on. The length is one value for every
// display, so the narrowest display decides. Displays in window-server coordinates.

// What the bar adds around an item's length (measured at about 16 pt).
inline constexpr double kHostedItemChrome = 16.0;
// Kept below the measured cap. Measurements put the cap at W/2 − 16, but one report saw 802 pt
// fail on a 1728-pt display, 46 pt short of it, and the cap moved between betas: 64 pt covers
// that report with room left for rounding to device pixels, and costs under a sixth of the
// length on the narrowest display Quillet expects (432 of 512 pt at 1024 pt). The collapse check
// catches what a margin cannot.
inline constexpr double kHostedSafetyMargin = 64.0;

// The length at which an item of ours would be dropped: half the narrowest display less the
// chrome; zero without displays.
double hostedDropThreshold(const std::vector<Rect>& displays);
// The longest length we ever give an item on the hosted bar.
double hostedLengthLimit(const std::vector<Rect>& displays);
// How many separators must share the collapsed length so that together they push the hidden
// section a whole display width, the widest: wherever the separator stands and however few
// menus the front application shows, that clears the hidden section off every display's bar.
std::size_t hostedSeparatorsNeeded(const std::vector<Rect>& displays);
// The length each of `separators` separators takes when collapsed: their share of the widest
// display, never above the limit.
double hostedSharedLength(const std::vector<Rect>& displays, std::size_t separators);

} // namespace quillet
