#pragma once

#include "core/ports/Geometry.hpp"

#include <optional>

namespace quillet {

class WindowListSource;

// Window-server reads beside the item mover: where one window is right now.
namespace HID {

// The bounds of exactly this window, from the first description the window server gives of it;
// none when the list cannot be had, the window is gone, or its bounds are missing or malformed.
std::optional<Rect> frame(const WindowListSource& windows, WindowID window);

} // namespace HID

} // namespace quillet
