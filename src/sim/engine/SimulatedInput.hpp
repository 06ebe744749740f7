#pragma once

#include "core/ports/InputInjector.hpp"
#include "core/ports/Scheduler.hpp"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace quillet::sim {

class VirtualScheduler;

// The input side of the simulated Mac: every posted event and pause with its virtual time, the
// cursor, and the left button as a user holds it. Pauses move the virtual scheduler's clock
// (they run inside background work, as the item mover does); without a scheduler they move a
// clock of their own. Happenings set for a time take place during the pause that reaches it, so
// a test can change the world in the middle of a drag.
class SimulatedInput {
public:
    struct PostedEvent {
        Duration time;
        MouseEvent event;
    };
    struct Pause {
        Duration start;
        std::chrono::microseconds length;
    };

    void setScheduler(VirtualScheduler* scheduler) { scheduler_ = scheduler; }
    Duration now() const;

    void record(const MouseEvent& event) { events_.push_back({now(), event}); }
    void pause(std::chrono::microseconds length);
    // Runs `happening` once a pause reaches `time`; happenings due together run in time order,
    // then in the order they were set.
    void at(Duration time, std::function<void()> happening);

    void setLeftButtonHeld(bool held) { leftButtonHeld_ = held; }
    bool isLeftButtonHeld() const { return leftButtonHeld_; }

    void hideCursor();
    void showCursor();
    void warp(Point location) { warps_.push_back(location); }

    const std::vector<PostedEvent>& events() const { return events_; }
    const std::vector<Pause>& pauses() const { return pauses_; }
    int cursorHides() const { return cursorHides_; }
    int cursorShows() const { return cursorShows_; }
    // How long the cursor has been hidden in all, on the clock of the pauses.
    Duration cursorHiddenTime() const { return cursorHidden_; }
    const std::vector<Point>& warps() const { return warps_; }

private:
    VirtualScheduler* scheduler_ = nullptr;
    Duration clock_{0};
    std::vector<PostedEvent> events_;
    std::vector<Pause> pauses_;
    std::multimap<Duration, std::function<void()>> happenings_;
    bool leftButtonHeld_ = false;
    int cursorHides_ = 0;
    int cursorShows_ = 0;
    Duration hiddenSince_{0};
    Duration cursorHidden_{0};
    std::vector<Point> warps_;
};

} // namespace quillet::sim
