#include "core/support/Task.hpp"
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

std::vector<Duration> eventTimes(const SimulatedMac& mac) {
    std::vector<Duration> times;
    for (const auto& posted : mac.input().events()) {
        times.push_back(posted.time);
    }
    return times;
}

TEST(SimulatedInput, WithoutASchedulerPausesAccumulateAndEventsCarryTheirTime) {
    SimulatedMac mac;
    mac.setDisplays({makeRect(0, 0, 1512, 982)});
    EventSource source;
    mac.post(source, {MouseEventType::mouseMoved, {100, 12}, 0, {}});
    mac.pause(20ms);
    mac.post(source, {MouseEventType::leftMouseDown, {100, 12}, EventFlags::command, {{91, 7}}});
    mac.pause(50ms);
    mac.pause(14ms);

    EXPECT_THAT(eventTimes(mac), ElementsAre(0ms, 20ms));
    EXPECT_EQ(mac.input().events()[1].event.integerFields,
              (std::vector<std::pair<std::uint32_t, std::int64_t>>{{91, 7}}));
    ASSERT_EQ(mac.input().pauses().size(), 3u);
    EXPECT_EQ(mac.input().pauses()[2].start, 70ms);
    EXPECT_EQ(mac.input().pauses()[2].length, 14ms);
    EXPECT_EQ(mac.input().now(), 84ms);
}

TEST(SimulatedInput, ThePointerFollowsPostedEventsAndWarpsInBothCoordinateSystems) {
    SimulatedMac mac;
    mac.setDisplays({makeRect(0, 0, 1512, 982)});
    mac.setPointerLocation({700, 900}); // AppKit: 82 points below the top
    EXPECT_EQ(mac.eventLocation(), (std::optional<Point>{{700, 82}}));

    EventSource source;
    mac.post(source, {MouseEventType::leftMouseDragged, {1300, 12}, 0, {}});
    EXPECT_EQ(mac.pointerLocation(), (Point{1300, 970}));

    mac.hideCursor();
    mac.warpCursor({700, 82});
    mac.showCursor();
    EXPECT_EQ(mac.pointerLocation(), (Point{700, 900}));
    EXPECT_THAT(mac.input().warps(), ElementsAre(Point{700, 82}));
    EXPECT_EQ(mac.input().cursorHides(), 1);
    EXPECT_EQ(mac.input().cursorShows(), 1);

    mac.setPointerEventAvailable(false);
    EXPECT_EQ(mac.eventLocation(), std::nullopt);
    EXPECT_TRUE(mac.createHIDEventSource());
    mac.setEventSourceAvailable(false);
    EXPECT_FALSE(mac.createHIDEventSource());
}

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
