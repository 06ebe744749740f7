#pragma once

#include "core/ports/Scheduler.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace quillet::sim {

// The simulated main thread and clock. Time moves only when the test or scenario moves it, and
// jobs run in the order of their due time, then of posting. Background work runs at once, as
// if on another thread; its pauses move the clock, the main-thread jobs that fall due during a
// pause run in it (as they would beside a real background thread), and its completion is due
// when it ends.
class VirtualScheduler : public Scheduler {
public:
    Duration now() const override { return now_; }
    void post(std::function<void()> job) override { postAfter(Duration{0}, std::move(job)); }
    void postAfter(Duration delay, std::function<void()> job) override;
    void runInBackground(std::function<void()> work, std::function<void()> completion) override;
    bool isMainThread() const override { return !inBackground_; }

    // Runs every job due by now + `span`, in order, then leaves the clock at now + `span`.
    void advance(Duration span);
    // Runs jobs until none is left, moving the clock to each one's due time.
    void runUntilIdle();
    // Runs the jobs due now.
    void runDue() { advance(Duration{0}); }

    // Time passing inside background work (a pause between synthetic events); main-thread jobs
    // due meanwhile run.
    void elapseInBackground(Duration span);
    // The running job is stuck in a blocking call for `span` (on the main thread too): the clock
    // moves on and nothing else runs meanwhile; what fell due runs late.
    void stall(Duration span) { now_ += span; }

    std::size_t pendingJobs() const { return queue_.size(); }

private:
    bool runNextDueBy(Duration deadline);
    void drain(Duration deadline);

    Duration now_{0};
    std::uint64_t sequence_ = 0;
    bool inBackground_ = false;
    std::map<std::pair<Duration, std::uint64_t>, std::function<void()>> queue_;
};

} // namespace quillet::sim
