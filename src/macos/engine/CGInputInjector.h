#pragma once

#include "core/ports/InputInjector.hpp"

namespace quillet::macos {

// Synthetic mouse and key events, the left button's state and the cursor, through Core Graphics.
// Holds no state of its own, so any thread may use it.
class CGInputInjector final : public InputInjector {
public:
    bool canPostEvents() const override;
    std::shared_ptr<EventSource> createHIDEventSource() override;
    std::optional<Point> eventLocation() override;
    void post(const EventSource& source, const MouseEvent& event) override;
    void post(const MouseEvent& event) override;
    void post(const EventSource* source, const KeyEvent& event) override;
    bool isLeftButtonDown() override;

    void hideCursor() override;
    void showCursor() override;
    void warpCursor(Point location) override;

    void pause(std::chrono::microseconds duration) override;
};

} // namespace quillet::macos
