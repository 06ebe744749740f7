#include "sim/engine/SimulatedInput.hpp"

#include "sim/VirtualScheduler.hpp"

namespace quillet::sim {

Duration SimulatedInput::now() const {
    return scheduler_ ? scheduler_->now() : clock_;
}

void SimulatedInput::pause(std::chrono::microseconds length) {
    pauses_.push_back({now(), length});
    if (scheduler_) {
        scheduler_->elapseInBackground(length);
    } else {
        clock_ += length;
    }
    // A happening may set another; each is taken out before it runs.
    while (!happenings_.empty() && happenings_.begin()->first <= now()) {
        auto due = happenings_.extract(happenings_.begin());
        due.mapped()();
    }
}

// Hides and shows nest: the cursor shows again at the last show.
void SimulatedInput::hideCursor() {
    if (cursorHides_++ == cursorShows_) {
        hiddenSince_ = now();
    }
}

void SimulatedInput::showCursor() {
    if (++cursorShows_ == cursorHides_) {
        cursorHidden_ += now() - hiddenSince_;
    }
}

void SimulatedInput::at(Duration time, std::function<void()> happening) {
    happenings_.emplace(time, std::move(happening));
}

} // namespace quillet::sim
