#include "sim/SimulatedMac.hpp"

namespace quillet::sim {

std::optional<WindowID> SimulatedMac::itemAt(Point location) const {
    for (WindowID window : bar_->order()) {
        if (auto frame = bar_->shownFrame(window); frame && frame->contains(location)) {
            return window;
        }
    }
    return std::nullopt;
}

void SimulatedMac::post(const MouseEvent& event) {
    if (!canPostEvents()) {
        return;
    }
    // The window server treats an event without a source as any other.
    post(EventSource{}, event);
    if ((event.flags & EventFlags::command) != 0) {
        return;
    }
    if (event.type == MouseEventType::leftMouseDown) {
        pressedItem_ = itemAt(event.location);
    } else if (event.type == MouseEventType::leftMouseUp) {
        if (auto released = itemAt(event.location); released && released == pressedItem_) {
            opened_.push_back(*released);
        }
        pressedItem_.reset();
    }
}

void SimulatedMac::post(const EventSource*, const KeyEvent& event) {
    if (!canPostEvents()) {
        return;
    }
    keyboard_.press(event);
}

} // namespace quillet::sim
