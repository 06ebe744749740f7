#include "sim/VirtualScheduler.hpp"

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quillet::sim {

namespace {

// More jobs than any scenario posts: a loop that keeps posting is a bug to report, not to wait on.
constexpr int kJobLimit = 1'000'000;

} // namespace

void VirtualScheduler::postAfter(Duration delay, std::function<void()> job) {
    queue_.emplace(std::make_pair(now_ + std::max(delay, Duration{0}), sequence_++),
                   std::move(job));
}

void VirtualScheduler::runInBackground(std::function<void()> work,
                                       std::function<void()> completion) {
    post([this, work = std::move(work), completion = std::move(completion)]() mutable {
        // Work may start from a main-thread job that runs while other work pauses.
        const bool outer = std::exchange(inBackground_, true);
        work();
        inBackground_ = outer;
        post(std::move(completion));
    });
}

// The main thread does not wait for background work: whatever falls due while the work pauses
// (a timer, a hot key press, a pointer move) runs then, between the work's steps.
void VirtualScheduler::elapseInBackground(Duration span) {
    assert(inBackground_ && "only background work lets time pass while it runs");
    const Duration deadline = now_ + span;
    inBackground_ = false;
    drain(deadline);
    inBackground_ = true;
    now_ = std::max(now_, deadline);
}

bool VirtualScheduler::runNextDueBy(Duration deadline) {
    if (queue_.empty() || queue_.begin()->first.first > deadline) {
        return false;
    }
    auto next = queue_.extract(queue_.begin());
    now_ = std::max(now_, next.key().first);
    next.mapped()();
    return true;
}

void VirtualScheduler::drain(Duration deadline) {
    for (int jobs = 0; runNextDueBy(deadline); ++jobs) {
        if (jobs == kJobLimit) {
            std::fputs("VirtualScheduler: jobs keep coming; giving up\n", stderr);
            std::abort();
        }
    }
}

void VirtualScheduler::advance(Duration span) {
    const Duration deadline = now_ + span;
    drain(deadline);
    now_ = std::max(now_, deadline);
}

void VirtualScheduler::runUntilIdle() {
    drain(Duration::max());
}

} // namespace quillet::sim
