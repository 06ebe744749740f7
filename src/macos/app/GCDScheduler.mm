#import "macos/app/GCDScheduler.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <chrono>
#include <dispatch/dispatch.h>

namespace quillet::macos {

Duration GCDScheduler::now() const {
    // On macOS libc++ reads steady_clock from CLOCK_UPTIME_RAW, the clock that
    // dispatch_time(DISPATCH_TIME_NOW, …) counts on (it stands still while the Mac sleeps), so a
    // delay measured with now() matches the one postAfter waits.
    return std::chrono::duration_cast<Duration>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void GCDScheduler::post(std::function<void()> job) {
    dispatch_async(dispatch_get_main_queue(), ^{
        job();
    });
}

void GCDScheduler::postAfter(Duration delay, std::function<void()> job) {
    const std::int64_t nanoseconds = std::max<std::int64_t>(delay.count(), 0);
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), ^{
        job();
    });
}

void GCDScheduler::runInBackground(std::function<void()> work, std::function<void()> completion) {
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0), ^{
        work();
        dispatch_async(dispatch_get_main_queue(), ^{
            completion();
        });
    });
}

bool GCDScheduler::isMainThread() const {
    return [NSThread isMainThread];
}

} // namespace quillet::macos
