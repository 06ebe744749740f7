#pragma once

#include "core/ports/Scheduler.hpp"

namespace quillet::macos {

// The main thread as Grand Central Dispatch's main queue, timers as dispatch_after, background
// work on a global queue of user-initiated priority.
class GCDScheduler final : public Scheduler {
public:
    Duration now() const override;
    void post(std::function<void()> job) override;
    void postAfter(Duration delay, std::function<void()> job) override;
    void runInBackground(std::function<void()> work, std::function<void()> completion) override;
    bool isMainThread() const override;
};

} // namespace quillet::macos
