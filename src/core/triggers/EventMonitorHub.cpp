#include "core/triggers/EventMonitorHub.hpp"

#include <algorithm>
#include <utility>

namespace quillet {

void EventMonitorHub::start() {
    if (!monitors_.empty()) {
        return;
    }
    auto handler = [self = anchor_.ref()] {
        if (auto* hub = self.get()) {
            hub->handleMove();
        }
    };
    if (auto token = monitorSource_.addGlobalMonitor(kMouseMovedEventMask, handler)) {
        monitors_.push_back(*token);
    }
    if (auto token = monitorSource_.addLocalMonitor(kMouseMovedEventMask, handler)) {
        monitors_.push_back(*token);
    }
}

void EventMonitorHub::stop() {
    for (auto token : std::exchange(monitors_, {})) {
        monitorSource_.removeMonitor(token);
    }
    concealTask_.cancel();
}

bool EventMonitorHub::hoverZoneContains(const Rect& screenFrame, double statusBarThickness,
                                        Point p) {
    return p.y >= screenFrame.maxY() - statusBarThickness && p.x > screenFrame.midX();
}

void EventMonitorHub::handleMove() {
    if (isOwnInput_ && isOwnInput_()) {
        return;
    }
    const Point pointer = displays_.pointerLocation();
    const auto screens = displays_.screens();
    auto screen = std::find_if(screens.begin(), screens.end(), [&](const Screen& candidate) {
        return candidate.frame.contains(pointer);
    });
    // Runs on every pointer move: the main screen is asked for only when no screen holds it.
    const auto fallback = screen == screens.end() ? displays_.mainScreen() : std::nullopt;
    if (screen == screens.end() && !fallback) {
        return;
    }
    const Rect& frame = screen != screens.end() ? screen->frame : fallback->frame;
    const bool inside = hoverZoneContains(frame, displays_.statusBarThickness(), pointer);

    if (inside && !insideHoverZone_) {
        insideHoverZone_ = true;
        concealTask_.cancel();
        onReveal_();
    } else if (!inside && insideHoverZone_) {
        insideHoverZone_ = false;
        scheduleConceal();
    }
}

void EventMonitorHub::scheduleConceal() {
    concealTask_.cancel();
    concealTask_ = TaskHandle::spawn(scheduler_, concealAfterDelay(scheduler_, anchor_.ref()));
}

Task<> EventMonitorHub::concealAfterDelay(Scheduler& scheduler,
                                          WeakAnchor<EventMonitorHub>::Ref self) {
    const bool completed = co_await sleep(scheduler, kConcealDelay);
    if (!completed) {
        co_return;
    }
    if (auto* hub = self.get()) {
        hub->onConceal_();
    }
}

} // namespace quillet
