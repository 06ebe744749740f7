#pragma once

#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/PointerMonitor.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/support/Task.hpp"
#include "core/support/WeakAnchor.hpp"

#include <chrono>
#include <functional>
#include <vector>

namespace quillet {

// "Reveal on hover": while the pointer is over the right half of the menu bar the hidden zone is
// revealed; half a second after it leaves that strip the zone is concealed again, unless it came
// back in time. Only entering and leaving call back, never an ordinary move.
class EventMonitorHub {
public:
    static constexpr Duration kConcealDelay = std::chrono::milliseconds(500);

    // `isOwnInput` says whether pointer events seen now are our own synthetic drags: they reach
    // the monitors like the user's, and the pointer they place is warped back without an event,
    // so a move seen then says nothing about where the user's pointer is.
    EventMonitorHub(PointerMonitor& monitors, const DisplayGeometry& displays, Scheduler& scheduler,
                    std::function<void()> onReveal, std::function<void()> onConceal,
                    std::function<bool()> isOwnInput = {})
        : monitorSource_(monitors), displays_(displays), scheduler_(scheduler),
          onReveal_(std::move(onReveal)), onConceal_(std::move(onConceal)),
          isOwnInput_(std::move(isOwnInput)) {}

    // Idempotent.
    void start();
    // Removes the monitors and cancels a pending conceal.
    void stop();
    bool isRunning() const { return !monitors_.empty(); }

    // One step of the outside/inside machine, from the pointer's current position.
    void handleMove();

    // The strip as high as the status bar at the top of the screen, right of its middle
    // (AppKit coordinates: y grows upward).
    static bool hoverZoneContains(const Rect& screenFrame, double statusBarThickness, Point p);

private:
    void scheduleConceal();
    static Task<> concealAfterDelay(Scheduler& scheduler, WeakAnchor<EventMonitorHub>::Ref self);

    PointerMonitor& monitorSource_;
    const DisplayGeometry& displays_;
    Scheduler& scheduler_;
    std::vector<PointerMonitor::Token> monitors_;
    std::function<void()> onReveal_;
    std::function<void()> onConceal_;
    std::function<bool()> isOwnInput_;
    bool insideHoverZone_ = false;
    TaskHandle concealTask_;
    WeakAnchor<EventMonitorHub> anchor_{this};
};

} // namespace quillet
