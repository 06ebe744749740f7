#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/KeyMonitor.hpp"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quillet {

// Mouse event types, with the window server's values.
enum class MouseEventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    mouseMoved = 5,
    leftMouseDragged = 6,
};

// Modifier flags of an input event, with the window server's values.
namespace EventFlags {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
} // namespace EventFlags

// A synthetic mouse event for the left button, in global coordinates (top-left origin).
struct MouseEvent {
    MouseEventType type = MouseEventType::mouseMoved;
    Point location;
    std::uint64_t flags = 0;
    // Integer fields set on the event, by field number.
    std::vector<std::pair<std::uint32_t, std::int64_t>> integerFields;
    friend bool operator==(const MouseEvent&, const MouseEvent&) = default;
};

// An event source with the state of the hardware input system.
class EventSource {
public:
    virtual ~EventSource() = default;
};

// Synthetic input and the cursor (CGEvent…, CGDisplayHideCursor, CGWarpMouseCursorPosition).
// Thread-safe: the item mover uses it from a background thread.
class InputInjector {
public:
    virtual ~InputInjector() = default;

    // Whether posted events reach the window server: without the Accessibility grant they are
    // dropped without a word (CGPreflightPostEventAccess; it never prompts).
    virtual bool canPostEvents() const = 0;
    // Null when no source can be made.
    virtual std::shared_ptr<EventSource> createHIDEventSource() = 0;
    // The pointer location (global, top-left origin) read from a fresh empty event; nullopt
    // when none can be made.
    virtual std::optional<Point> eventLocation() = 0;
    // Makes the event with `source`, sets its flags and fields, posts it at the HID event tap.
    virtual void post(const EventSource& source, const MouseEvent& event) = 0;
    // The same with no event source.
    virtual void post(const MouseEvent& event) = 0;
    // Makes a key event with `source` (none when null) and posts it at the HID event tap.
    virtual void post(const EventSource* source, const KeyEvent& event) = 0;
    // Whether the left button is physically down (HID system state).
    virtual bool isLeftButtonDown() = 0;

    // Cursor on the main display.
    virtual void hideCursor() = 0;
    virtual void showCursor() = 0;
    // Moves the pointer without generating events.
    virtual void warpCursor(Point location) = 0;

    // Blocks the calling thread.
    virtual void pause(std::chrono::microseconds duration) = 0;
};

} // namespace quillet
