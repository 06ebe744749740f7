#include "core/triggers/EventMonitorHub.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/VirtualScheduler.hpp"
#include "sim/triggers/SimulatedPointer.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using namespace std::chrono_literals;

// A 1512 × 982 display with a 24-point menu bar: in AppKit coordinates the hover strip is
// y ≥ 958 and x > 756.
class EventMonitorHubTest : public ::testing::Test {
protected:
    EventMonitorHubTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1920, 1080)});
        hub.start();
    }

    sim::SimulatedMac mac;
    sim::SimulatedPointer pointer{mac};
    sim::VirtualScheduler scheduler;
    int reveals = 0;
    int conceals = 0;
    EventMonitorHub hub{pointer, mac, scheduler, [this] { ++reveals; }, [this] { ++conceals; }};
};

TEST_F(EventMonitorHubTest, OnlyTheRightHalfOfTheMenuBarReveals) {
    pointer.moveTo({100, 970});
    pointer.moveTo({756, 981});
    EXPECT_EQ(reveals, 0);
    pointer.moveTo({757, 958});
    EXPECT_EQ(reveals, 1);
    pointer.moveTo({1500, 975}); // moving within the strip calls nothing more
    EXPECT_EQ(reveals, 1);
    scheduler.advance(1s); // and a pointer resting in it keeps the zone open
    EXPECT_EQ(conceals, 0);
}

TEST_F(EventMonitorHubTest, LeavingConcealsHalfASecondLaterUnlessThePointerReturns) {
    pointer.moveTo({1000, 970});
    pointer.moveTo({1000, 500});
    scheduler.advance(400ms);
    pointer.moveTo({1000, 970});
    EXPECT_EQ(reveals, 2);
    scheduler.advance(1s);
    EXPECT_EQ(conceals, 0);

    pointer.moveTo({1000, 957});
    scheduler.advance(499ms);
    EXPECT_EQ(conceals, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(conceals, 1);
    scheduler.advance(5s);
    EXPECT_EQ(conceals, 1);
}

TEST_F(EventMonitorHubTest, TurningHoverOffCancelsAPendingConceal) {
    pointer.moveTo({1000, 970});
    pointer.moveTo({1000, 500});
    hub.stop();
    scheduler.advance(1s);
    EXPECT_EQ(conceals, 0);
    EXPECT_EQ(pointer.monitorCount(), 0u);
    pointer.moveTo({1000, 970});
    EXPECT_EQ(reveals, 1);
}

TEST_F(EventMonitorHubTest, EachScreenHasItsOwnStripAndOffScreenPointsUseTheMainOne) {
    // The second display's AppKit frame is (1512, -98, 1920, 1080): its strip is y ≥ 958,
    // x > 2472.
    pointer.moveTo({2000, 970});
    EXPECT_EQ(reveals, 0);
    pointer.moveTo({2500, 970});
    EXPECT_EQ(reveals, 1);
    pointer.moveTo({2500, 500});
    pointer.moveTo({1000, 5000}); // above every screen: judged against the main screen
    EXPECT_EQ(reveals, 2);
}

TEST_F(EventMonitorHubTest, WatchesOwnWindowsTooAndStartsOnce) {
    hub.start();
    EXPECT_EQ(pointer.monitorCount(), 2u);
    pointer.setOverOwnWindow(true);
    pointer.moveTo({1000, 970});
    EXPECT_EQ(reveals, 1);
}

// Posted mouse-moved events reach the monitors like the user's own, on the main thread; while
// the input is ours (a drag of the item mover), the hub looks away.
TEST(EventMonitorHub, PostedMovesReachItAndOurOwnAreIgnored) {
    sim::VirtualScheduler scheduler;
    sim::SimulatedMac mac{scheduler};
    mac.setDisplays({makeRect(0, 0, 1512, 982)});
    sim::SimulatedPointer pointer{mac};
    bool ours = false;
    int reveals = 0;
    EventMonitorHub hub{pointer, mac, scheduler, [&] { ++reveals; }, [] {}, [&] { return ours; }};
    hub.start();
    EventSource source;
    auto post = [&](MouseEventType type, double y) {
        mac.post(source, {type, {1200, y}, 0, {}}); // window-server coordinates
        scheduler.runDue();
    };
    post(MouseEventType::leftMouseDragged, 10); // not a mouse-moved event
    EXPECT_EQ(reveals, 0);
    post(MouseEventType::mouseMoved, 10);
    EXPECT_EQ(reveals, 1);
    post(MouseEventType::mouseMoved, 500);
    ours = true;
    post(MouseEventType::mouseMoved, 10);
    EXPECT_EQ(reveals, 1);
    ours = false;
    post(MouseEventType::mouseMoved, 10);
    EXPECT_EQ(reveals, 2);
}

TEST(EventMonitorHub, WithoutScreensOrMonitorsNothingHappens) {
    sim::SimulatedMac mac;
    sim::SimulatedPointer pointer{mac};
    sim::VirtualScheduler scheduler;
    int calls = 0;
    EventMonitorHub hub(
        pointer, mac, scheduler, [&] { ++calls; }, [&] { ++calls; });
    hub.start();
    pointer.moveTo({1000, 970});
    EXPECT_EQ(calls, 0);

    pointer.refuseMonitors(true);
    EventMonitorHub refused(
        pointer, mac, scheduler, [&] { ++calls; }, [&] { ++calls; });
    refused.start();
    EXPECT_FALSE(refused.isRunning());
}

} // namespace
} // namespace quillet
