#include "core/support/Task.hpp"
#include "sim/VirtualScheduler.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using sim::VirtualScheduler;
using ::testing::ElementsAre;

class TaskSchedulingTest : public ::testing::Test {
protected:
    void note(const std::string& what) {
        events.push_back(what + "@" + std::to_string(scheduler.now() / 1ms));
    }

    Task<> sleeper(std::string name, Duration delay) {
        note(name + " start");
        bool completed = co_await sleep(scheduler, delay);
        note(name + (completed ? " woke" : " cancelled"));
    }

    VirtualScheduler scheduler;
    std::vector<std::string> events;
};

TEST_F(TaskSchedulingTest, ASpawnedTaskStartsOnTheNextTurnAndSleepsInVirtualTime) {
    auto handle = TaskHandle::spawn(scheduler, sleeper("a", 500ms));
    EXPECT_TRUE(events.empty());
    scheduler.advance(499ms);
    EXPECT_THAT(events, ElementsAre("a start@0"));
    EXPECT_FALSE(handle.isDone());
    scheduler.advance(1ms);
    EXPECT_THAT(events, ElementsAre("a start@0", "a woke@500"));
    EXPECT_TRUE(handle.isDone());
}

TEST_F(TaskSchedulingTest, ACancelledTaskLearnsItWhenItsSleepEnds) {
    auto handle = TaskHandle::spawn(scheduler, sleeper("a", 500ms));
    scheduler.advance(100ms);
    handle.cancel();
    scheduler.runUntilIdle();
    EXPECT_THAT(events, ElementsAre("a start@0", "a cancelled@500"));
}

// The shape of a serial queue: each job awaits the one before it, and only the newest handle is
// kept, so a waiting job must stay alive on its own.
TEST_F(TaskSchedulingTest, ChainedTasksRunOneAtATimeInSubmissionOrder) {
    TaskHandle tail;
    auto enqueue = [&](std::string name, Duration delay) {
        auto job = [](TaskHandle previous, Task<> body) -> Task<> {
            co_await previous;
            co_await body;
        };
        tail = TaskHandle::spawn(scheduler, job(tail, sleeper(std::move(name), delay)));
    };
    enqueue("first", 300ms);
    enqueue("second", 100ms);
    scheduler.advance(50ms);
    enqueue("third", 10ms);
    scheduler.runUntilIdle();
    EXPECT_THAT(events, ElementsAre("first start@0", "first woke@300", "second start@300",
                                    "second woke@400", "third start@400", "third woke@410"));
    EXPECT_TRUE(tail.isDone());
}

TEST_F(TaskSchedulingTest, NestedTasksReturnValuesAndShareCancellation) {
    auto inner = [this]() -> Task<int> {
        co_await sleep(scheduler, 10ms);
        co_return 42;
    };
    int result = 0;
    bool laterSleepCompleted = true;
    auto outer = [&]() -> Task<> {
        result = co_await inner();
        laterSleepCompleted = co_await sleep(scheduler, 10ms);
    };
    auto handle = TaskHandle::spawn(scheduler, outer());
    scheduler.advance(15ms);
    EXPECT_EQ(result, 42);
    handle.cancel();
    scheduler.runUntilIdle();
    EXPECT_FALSE(laterSleepCompleted);
}

TEST_F(TaskSchedulingTest, BackgroundWorkRunsOffTheMainThreadAndResumesWithItsResult) {
    bool workOnMain = true;
    bool resumedOnMain = false;
    std::string result;
    auto job = [&]() -> Task<> {
        result = co_await inBackground<std::string>(scheduler, [&] {
            workOnMain = scheduler.isMainThread();
            scheduler.elapseInBackground(400ms);
            return std::string("landed");
        });
        resumedOnMain = scheduler.isMainThread();
        note("resumed");
    };
    TaskHandle::spawn(scheduler, job());
    scheduler.runUntilIdle();
    EXPECT_FALSE(workOnMain);
    EXPECT_TRUE(resumedOnMain);
    EXPECT_EQ(result, "landed");
    EXPECT_THAT(events, ElementsAre("resumed@400"));
}

// As beside a real background thread, the main thread goes on while the work pauses; the work
// resumes once the jobs due meanwhile have run.
TEST_F(TaskSchedulingTest, JobsDueDuringBackgroundWorkRunWhileItPauses) {
    scheduler.postAfter(100ms, [&] {
        note("timer");
        EXPECT_TRUE(scheduler.isMainThread());
    });
    scheduler.runInBackground(
        [&] {
            scheduler.elapseInBackground(300ms);
            note("work");
            EXPECT_FALSE(scheduler.isMainThread());
        },
        [&] { note("completion"); });
    scheduler.runUntilIdle();
    EXPECT_THAT(events, ElementsAre("timer@100", "work@300", "completion@300"));
}

TEST(TaskScheduling, ASchedulerDroppedWithASleepingTaskFreesIt) {
    auto scheduler = std::make_unique<VirtualScheduler>();
    auto guard = std::make_shared<int>(0);
    std::weak_ptr<int> watch = guard;
    auto job = [](Scheduler& s, std::shared_ptr<int> held) -> Task<> {
        co_await sleep(s, 1000ms);
        ++*held;
    };
    TaskHandle::spawn(*scheduler, job(*scheduler, std::move(guard)));
    scheduler->advance(10ms);
    EXPECT_FALSE(watch.expired());
    scheduler.reset();
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace quillet
