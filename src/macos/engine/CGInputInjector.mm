#include "macos/engine/CGInputInjector.h"

#include "macos/support/CFRef.h"

#include <CoreGraphics/CoreGraphics.h>

#include <unistd.h>
#include <utility>

namespace quillet::macos {

namespace {

// An event source with the HID system's state; releases it with the last reference.
class HIDEventSource final : public EventSource {
public:
    explicit HIDEventSource(CFRef<CGEventSourceRef> source) : source_(std::move(source)) {}
    CGEventSourceRef get() const { return source_.get(); }

private:
    CFRef<CGEventSourceRef> source_;
};

// Makes the event with `source` (none when null) and posts it; an event that cannot be made is
// skipped.
void postMouseEvent(CGEventSourceRef source, const MouseEvent& event) {
    CFRef<CGEventRef> mouseEvent(
        CGEventCreateMouseEvent(source, static_cast<CGEventType>(event.type),
                                CGPoint{event.location.x, event.location.y}, kCGMouseButtonLeft));
    if (!mouseEvent) {
        return;
    }
    CGEventSetFlags(mouseEvent.get(), static_cast<CGEventFlags>(event.flags));
    for (const auto& [field, value] : event.integerFields) {
        CGEventSetIntegerValueField(mouseEvent.get(), static_cast<CGEventField>(field), value);
    }
    CGEventPost(kCGHIDEventTap, mouseEvent.get());
}

} // namespace

std::shared_ptr<EventSource> CGInputInjector::createHIDEventSource() {
    CFRef<CGEventSourceRef> source(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
    if (!source) {
        return nullptr;
    }
    return std::make_shared<HIDEventSource>(std::move(source));
}

std::optional<Point> CGInputInjector::eventLocation() {
    CFRef<CGEventRef> event(CGEventCreate(nullptr));
    if (!event) {
        return std::nullopt;
    }
    const CGPoint location = CGEventGetLocation(event.get());
    return Point{location.x, location.y};
}

void CGInputInjector::post(const EventSource& source, const MouseEvent& event) {
    // Only sources made by createHIDEventSource exist in the app.
    const auto* hidSource = dynamic_cast<const HIDEventSource*>(&source);
    if (hidSource == nullptr) {
        return;
    }
    postMouseEvent(hidSource->get(), event);
}

void CGInputInjector::post(const MouseEvent& event) {
    postMouseEvent(nullptr, event);
}

void CGInputInjector::post(const EventSource* source, const KeyEvent& event) {
    const auto* hidSource = dynamic_cast<const HIDEventSource*>(source);
    CFRef<CGEventRef> keyEvent(CGEventCreateKeyboardEvent(
        hidSource != nullptr ? hidSource->get() : nullptr, event.keyCode, event.keyDown));
    if (keyEvent) {
        CGEventPost(kCGHIDEventTap, keyEvent.get());
    }
}

bool CGInputInjector::canPostEvents() const {
    return CGPreflightPostEventAccess();
}

bool CGInputInjector::isLeftButtonDown() {
    return CGEventSourceButtonState(kCGEventSourceStateHIDSystemState, kCGMouseButtonLeft);
}

void CGInputInjector::hideCursor() {
    CGDisplayHideCursor(CGMainDisplayID());
}

void CGInputInjector::showCursor() {
    CGDisplayShowCursor(CGMainDisplayID());
}

void CGInputInjector::warpCursor(Point location) {
    CGWarpMouseCursorPosition(CGPoint{location.x, location.y});
}

void CGInputInjector::pause(std::chrono::microseconds duration) {
    if (duration.count() > 0) {
        usleep(static_cast<useconds_t>(duration.count()));
    }
}

} // namespace quillet::macos
