#include "core/engine/ToggleClickWatch.hpp"

#include "core/ports/InputInjector.hpp"

namespace quillet {

namespace {

bool isDown(std::uint32_t type) {
    return type == static_cast<std::uint32_t>(MouseEventType::leftMouseDown) ||
           type == static_cast<std::uint32_t>(MouseEventType::rightMouseDown);
}

// The up event that ends a press of the button that `down` pressed.
bool ends(std::uint32_t up, std::uint32_t down) {
    return up == down + 1;
}

} // namespace

ToggleClickWatch::ToggleClickWatch(Dependencies dependencies) : deps_(std::move(dependencies)) {
    for (bool global : {false, true}) {
        auto token = deps_.pointer.addButtonMonitor(
            global, [ref = anchor_.ref()](const PointerMonitor::ButtonChange& change) {
                if (auto* self = ref.get()) {
                    self->buttonChanged(change);
                }
            });
        if (token) {
            monitors_.push_back(*token);
        }
    }
}

ToggleClickWatch::~ToggleClickWatch() {
    for (auto token : monitors_) {
        deps_.pointer.removeMonitor(token);
    }
}

// A click is a button going down and up again on the toggle. With Command held it is the user
// moving the toggle, and while our own drags run it is one of them: neither is a click.
void ToggleClickWatch::buttonChanged(const PointerMonitor::ButtonChange& change) {
    const bool onToggle = !(change.modifierFlags & EventFlags::command) && !deps_.movingItems() &&
                          deps_.isOnToggle(change.location);
    if (isDown(change.type)) {
        pressed_ = onToggle ? std::optional(change) : std::nullopt;
        return;
    }
    const bool clicked = onToggle && pressed_ && ends(change.type, pressed_->type);
    pressed_.reset();
    if (!clicked) {
        return;
    }
    if (unreported_) {
        // Clicked again before the first was reported: the first goes on now, in its order.
        deliverUnreported(clicks_);
    }
    unreported_ = ButtonEvent{change.type, change.modifierFlags};
    deps_.scheduler.postAfter(kButtonReportWait, [ref = anchor_.ref(), click = ++clicks_] {
        if (auto* self = ref.get()) {
            self->deliverUnreported(click);
        }
    });
}

void ToggleClickWatch::deliverUnreported(unsigned click) {
    if (click != clicks_ || !unreported_) {
        return;
    }
    const auto event = *unreported_;
    unreported_.reset();
    deliveredUnreported_.push_back(deps_.scheduler.now());
    deps_.deliver(event);
}

// Reports come in the order of the clicks: one that finds a click passed on already owing its
// report is that click's, late.
void ToggleClickWatch::buttonSent(std::optional<ButtonEvent> event) {
    const Duration now = deps_.scheduler.now();
    while (!deliveredUnreported_.empty() && now - deliveredUnreported_.front() >= kLateReport) {
        deliveredUnreported_.pop_front();
    }
    if (!deliveredUnreported_.empty()) {
        deliveredUnreported_.pop_front();
        return;
    }
    if (unreported_) {
        // The same click: the monitors saw its real type and modifier flags.
        event = *unreported_;
        unreported_.reset();
    }
    deps_.deliver(event);
}

} // namespace quillet
