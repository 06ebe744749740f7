#pragma once

#include <chrono>
#include <functional>

namespace quillet {

// Time on the monotonic clock, counted from an arbitrary start.
using Duration = std::chrono::nanoseconds;

// The main thread as an executor, with a monotonic clock and one way off the main thread
// (GCD's main queue, dispatch_after and a global queue on a Mac; virtual time in tests).
class Scheduler {
public:
    virtual ~Scheduler() = default;

    virtual Duration now() const = 0;
    // Runs `job` on the main thread after whatever is already due.
    virtual void post(std::function<void()> job) = 0;
    // Runs `job` on the main thread once `delay` has passed.
    virtual void postAfter(Duration delay, std::function<void()> job) = 0;
    // Runs `work` on a background thread at user-initiated priority, then `completion` on the
    // main thread.
    virtual void runInBackground(std::function<void()> work, std::function<void()> completion) = 0;
    virtual bool isMainThread() const = 0;
};

} // namespace quillet
