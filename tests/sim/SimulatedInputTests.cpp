#include "sim/SimulatedMac.hpp"
#include "sim/VirtualScheduler.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using sim::SimulatedMac;
using sim::VirtualScheduler;
using ::testing::ElementsAre;

// What posted events, pauses, warps and the cursor leave on the simulated Mac is read by the item
// mover's tests; where a posted move takes the pointer, by the hover tests'.
class ScheduledInputTest : public ::testing::Test {
protected:
    // Pauses as the item mover makes them: inside background work.
    void pauseInBackground(std::vector<Duration> pauses) {
        scheduler.runInBackground(
            [this, pauses] {
                for (Duration pause : pauses) {
                    mac.pause(std::chrono::duration_cast<std::chrono::microseconds>(pause));
                    buttonSeen.push_back(mac.isLeftButtonDown());
                }
            },
            [this] { completedAt = scheduler.now(); });
        scheduler.runUntilIdle();
    }

    VirtualScheduler scheduler;
    SimulatedMac mac{scheduler};
    std::vector<bool> buttonSeen;
    Duration completedAt{-1};
};

TEST_F(ScheduledInputTest, PausesMoveTheSchedulersClockAndHappeningsTakePlaceDuringThem) {
    std::vector<std::string> happened;
    mac.at(60ms, [&] { happened.push_back("late@" + std::to_string(mac.input().now() / 1ms)); });
    mac.at(30ms, [&] { happened.push_back("early@" + std::to_string(mac.input().now() / 1ms)); });
    mac.holdLeftButtonFrom(45ms);
    scheduler.postAfter(
        25ms, [&] { happened.push_back("main thread@" + std::to_string(scheduler.now() / 1ms)); });

    pauseInBackground({20ms, 20ms, 20ms, 20ms});

    // The main thread does not wait for the background work: its job runs when due.
    EXPECT_THAT(happened, ElementsAre("main thread@25", "early@40", "late@60"));
    EXPECT_THAT(buttonSeen, ElementsAre(false, false, true, true));
    EXPECT_EQ(completedAt, 80ms);
}

} // namespace
} // namespace quillet
