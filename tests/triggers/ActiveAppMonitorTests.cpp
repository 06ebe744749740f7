#include "core/app/AppDelegate.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/engine/ItemMover.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/triggers/ActiveAppMonitor.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillet {
namespace {

using sim::SimulatedMac;

TEST(ActiveAppMonitor, MatchesTheRuledApplicationAndItsDottedRelatives) {
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app", "com.example.app"));
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app", "com.example.app.agent"));
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app.agent", "com.example.app"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.app", "com.example.application"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.application", "com.example.app"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.app", "Com.Example.App"));
}

const SimulatedMac::Application kWeather{"com.example.weather", "Weather", 703};
const SimulatedMac::Application kNotes{"com.example.notes", "Notes", 704};

// Quillet running with one Auto application; every move it asks for shows up as Command-drags.
class ActiveAppMonitorTest : public ::testing::Test {
protected:
    ActiveAppMonitorTest() {
        quillet.world.mac.addApplicationItem(kNotes, kNotes.bundleID, 26);
        weather = quillet.world.mac.addApplicationItem(kWeather, kWeather.bundleID, 30);
        quillet.services.preferences().setSection(MenuBarSection::dynamic, kWeather.bundleID);
        quillet.delegate.applicationDidFinishLaunching();
        quillet.world.scheduler.runUntilIdle();
    }

    void activate(const std::string& bundleID) {
        quillet.world.mac.activateApplication(bundleID);
        quillet.world.scheduler.runUntilIdle();
    }
    // Command-drags of the Auto application's item so far.
    long dragsOfWeather() const {
        const std::pair<std::uint32_t, std::int64_t> naming{ItemMover::windowIDField, weather};
        const auto& events = quillet.world.mac.input().events();
        return std::count_if(events.begin(), events.end(), [&](const auto& posted) {
            const auto& fields = posted.event.integerFields;
            return posted.event.type == MouseEventType::leftMouseDown &&
                   std::find(fields.begin(), fields.end(), naming) != fields.end();
        });
    }
    bool weatherOnScreen() const { return quillet.world.mac.statusItemFrame(weather)->maxX() > 0; }
    ActiveAppMonitor& monitor() { return quillet.services.activeAppMonitor(); }

    sim::SimulatedQuillet quillet;
    WindowID weather = 0;
};

TEST_F(ActiveAppMonitorTest, ShowsOnceWhileTheApplicationStaysInFront) {
    activate(kWeather.bundleID);
    EXPECT_TRUE(weatherOnScreen());
    // A layout job would be pending at once; none is.
    quillet.world.mac.activateApplication(kWeather.bundleID);
    EXPECT_EQ(quillet.world.scheduler.pendingJobs(), 0u);
    EXPECT_EQ(monitor().shown(), std::set<std::string>{kWeather.bundleID});
}

TEST_F(ActiveAppMonitorTest, AnotherApplicationInFrontSendsTheItemsBackToHidden) {
    activate("com.example.weather.widget");
    activate(kNotes.bundleID);
    EXPECT_FALSE(weatherOnScreen());
    EXPECT_TRUE(monitor().shown().empty());
    quillet.delegate.controlManager->setExpanded(true);
    EXPECT_TRUE(weatherOnScreen()); // in the hidden zone, not the always-hidden one
}

TEST_F(ActiveAppMonitorTest, AKeyNoLongerAutoIsOnlyForgotten) {
    activate(kWeather.bundleID);
    const long drags = dragsOfWeather();
    quillet.services.preferences().setSection(MenuBarSection::visible, kWeather.bundleID);
    // The change is announced before it is stored: that refresh still sees the Auto rule.
    EXPECT_EQ(monitor().shown(), std::set<std::string>{kWeather.bundleID});
    activate(kNotes.bundleID);
    EXPECT_TRUE(monitor().shown().empty());
    EXPECT_EQ(dragsOfWeather(), drags);
    EXPECT_TRUE(weatherOnScreen());
}

TEST_F(ActiveAppMonitorTest, StartingTwiceObservesOnceAndStoppingKeepsWhatIsShown) {
    activate(kWeather.bundleID);
    const auto observers = quillet.world.mac.observerCount();
    monitor().start();
    EXPECT_EQ(quillet.world.mac.observerCount(), observers);
    monitor().stop();
    EXPECT_EQ(quillet.world.mac.observerCount(), observers - 1);
    activate(kNotes.bundleID);
    EXPECT_EQ(monitor().shown(), std::set<std::string>{kWeather.bundleID});
}

} // namespace
} // namespace quillet
