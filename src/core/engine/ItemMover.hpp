#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>

namespace quillet {

class InputInjector;
class WindowListSource;

// Moves one menu bar item to the left or right of another (the anchor) the way a user does: a
// Command-drag, made of synthetic mouse events. It checks where the item landed and tries again
// with longer pauses, because the window server takes its time to settle. Slow on purpose and
// blocking: run it off the main thread.
namespace ItemMover {

enum class Side { left, right };

// The input event field that carries a target window number. It has no public name.
inline constexpr std::uint32_t windowIDField = 51;

// The most attempts a move may make: the growing pause (32-bit microseconds) would overflow on
// the 28th growth.
inline constexpr int maxAttemptLimit = 27;

// True when the item ends on `side` of the anchor. A limit of 0 only checks; a negative limit or
// one above maxAttemptLimit is a programming error and stops the program. False when events
// cannot be posted (checked before the cursor is touched), no event source can be made, a frame
// cannot be read, a user holds the left button, or the attempts run out.
bool move(InputInjector& input, const WindowListSource& windows, WindowID itemWID, Side side,
          WindowID anchorWID, int maxAttempts);

} // namespace ItemMover

} // namespace quillet
