#include "core/app/AppDelegate.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/triggers/EventMonitorHub.hpp"
#include "core/triggers/HotKeyManager.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using sim::SimulatedMac;
using ::testing::ElementsAre;

const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};
const SimulatedMac::Application kWeather{"com.example.weather", "Weather", 703};
const SimulatedMac::Application kDocker{"com.docker.docker", "Docker", 704};

constexpr std::uint32_t kKeyB = 11;
constexpr std::uint32_t kKeyM = 46;
constexpr std::uint32_t kCommandShift = 768;

// A macOS 26 menu bar with four applications' items, and rules for three of them.
class RunningQuillet : public ::testing::Test {
protected:
    explicit RunningQuillet(std::vector<std::string> arguments = {"Quillet"})
        : quillet(std::move(arguments), nullptr,
                  {.showSettings = [this] { ++settingsShown; },
                   .startKeyboardNav = {},
                   .runNavigationSelfTest =
                       [this] {
                           ++selfTests;
                           selfTestTime = scheduler().now();
                       }}) {
        // Like macOS, new items appear at the left end: added from right to left.
        docker = mac().addApplicationItem(kDocker, kDocker.bundleID, 26);
        weather = mac().addApplicationItem(kWeather, kWeather.bundleID, 30);
        slack = mac().addApplicationItem(kSlack, kSlack.bundleID, 24);
        dropbox = mac().addApplicationItem(kDropbox, kDropbox.bundleID, 28);
        preferences().setSectionByBundleID({{kDropbox.bundleID, MenuBarSection::hidden},
                                            {kSlack.bundleID, MenuBarSection::alwaysHidden},
                                            {kWeather.bundleID, MenuBarSection::dynamic}});
    }

    void launchAndSettle() {
        quillet.delegate.applicationDidFinishLaunching();
        scheduler().runUntilIdle();
    }

    sim::SimulatedMac& mac() { return quillet.world.mac; }
    sim::VirtualScheduler& scheduler() { return quillet.world.scheduler; }
    AppPreferences& preferences() { return quillet.services.preferences(); }
    ControlItemManager& manager() { return *quillet.delegate.controlManager; }
    bool onScreen(WindowID window) { return mac().statusItemFrame(window)->maxX() > 0; }
    // Where the pointer would be over the right half of the menu bar (AppKit coordinates).
    void pointerOntoMenuBar() { quillet.world.pointer.moveTo({1200, 970}); }
    void pointerAway() { quillet.world.pointer.moveTo({1200, 500}); }

    sim::SimulatedQuillet quillet;
    int settingsShown = 0;
    int selfTests = 0;
    Duration selfTestTime{0};
    WindowID dropbox = 0, slack = 0, weather = 0, docker = 0;
};

TEST_F(RunningQuillet, LaunchArrangesTheZonesAndCollapses) {
    launchAndSettle();
    EXPECT_EQ(quillet.world.application.activationPolicy(), ActivationPolicy::accessory);
    EXPECT_EQ(quillet.world.updater.starts(), 1);
    EXPECT_FALSE(manager().isExpanded());
    EXPECT_FALSE(onScreen(dropbox));
    EXPECT_FALSE(onScreen(slack));
    EXPECT_FALSE(onScreen(weather)); // an Auto item waits with the hidden ones
    EXPECT_TRUE(onScreen(docker));
    EXPECT_EQ(settingsShown, 0);
    EXPECT_EQ(selfTests, 0);
}

TEST_F(RunningQuillet, TheHotKeyTogglesTheHiddenZoneButNeverTheAlwaysHiddenOne) {
    launchAndSettle();
    quillet.world.hotKeys.press(kKeyB, kCommandShift);
    EXPECT_TRUE(onScreen(dropbox));
    EXPECT_FALSE(onScreen(slack));
    quillet.world.hotKeys.press(kKeyB, kCommandShift);
    EXPECT_FALSE(onScreen(dropbox));
}

TEST_F(RunningQuillet, ChangingTheHotKeyTwiceLeavesOneRegistration) {
    launchAndSettle();
    preferences().setHotKey(HotKeyOption::cmdShiftM);
    preferences().setHotKey(HotKeyOption::optionCmdB);
    preferences().setHotKey(HotKeyOption::cmdShiftM);
    EXPECT_EQ(quillet.world.hotKeys.registrationCount(), 1u);
    EXPECT_EQ(quillet.world.hotKeys.handlerCount(), 1u);
    quillet.world.hotKeys.press(kKeyB, kCommandShift);
    EXPECT_FALSE(onScreen(dropbox));
    quillet.world.hotKeys.press(kKeyM, kCommandShift);
    EXPECT_TRUE(onScreen(dropbox));
}

TEST_F(RunningQuillet, HoverRevealsAtOnceAndConcealsHalfASecondAfterThePointerLeaves) {
    launchAndSettle();
    pointerOntoMenuBar();
    EXPECT_TRUE(onScreen(dropbox));
    pointerAway();
    scheduler().advance(300ms);
    pointerOntoMenuBar(); // back in time: stays open
    pointerAway();
    scheduler().advance(499ms);
    EXPECT_TRUE(onScreen(dropbox));
    scheduler().advance(1ms);
    EXPECT_FALSE(onScreen(dropbox));
}

TEST_F(RunningQuillet, TurningHoverOffStopsTheMonitorsAndItsPendingConceal) {
    launchAndSettle();
    pointerOntoMenuBar();
    pointerAway();
    preferences().setAutoRehide(false);
    scheduler().advance(1s);
    EXPECT_TRUE(onScreen(dropbox));
    EXPECT_EQ(quillet.world.pointer.monitorCount(), 0u);
}

TEST_F(RunningQuillet, AnAutoApplicationsItemsShowWhileItIsFrontmostAndGoBackToHidden) {
    launchAndSettle();
    mac().activateApplication("com.example.weather.helper");
    scheduler().runUntilIdle();
    EXPECT_TRUE(onScreen(weather));
    EXPECT_FALSE(manager().isExpanded());
    EXPECT_FALSE(onScreen(dropbox));

    mac().activateApplication(kDocker.bundleID);
    scheduler().runUntilIdle();
    EXPECT_FALSE(onScreen(weather));
    quillet.world.hotKeys.press(kKeyB, kCommandShift); // hidden, not always hidden
    EXPECT_TRUE(onScreen(weather));
}

// Shown while in front, then ruled Always Show: leaving the front moves nothing.
TEST_F(RunningQuillet, AnAutoItemRuledVisibleWhileShownStaysWhereItIs) {
    launchAndSettle();
    mac().activateApplication(kWeather.bundleID);
    scheduler().runUntilIdle();
    preferences().setSection(MenuBarSection::visible, kWeather.bundleID);
    const auto posted = mac().input().events().size();
    mac().activateApplication(kDocker.bundleID);
    scheduler().runUntilIdle();
    EXPECT_EQ(mac().input().events().size(), posted);
    EXPECT_TRUE(onScreen(weather));
}

TEST_F(RunningQuillet, AProfileSwitchRearrangesButARuleChangeAloneDoesNot) {
    launchAndSettle();
    preferences().setSection(MenuBarSection::visible, kDropbox.bundleID);
    const auto posted = mac().input().events().size();
    scheduler().runUntilIdle();
    EXPECT_EQ(mac().input().events().size(), posted);
    EXPECT_FALSE(onScreen(dropbox));

    preferences().saveProfile("Dropbox in sight"); // a new active profile: rearranged
    scheduler().runUntilIdle();
    EXPECT_TRUE(onScreen(dropbox));

    preferences().setSection(MenuBarSection::hidden, kDropbox.bundleID);
    scheduler().runUntilIdle();
    EXPECT_TRUE(onScreen(dropbox));
    preferences().saveProfile("Dropbox hidden");
    scheduler().runUntilIdle();
    EXPECT_FALSE(onScreen(dropbox));

    preferences().switchProfile("Dropbox in sight");
    scheduler().runUntilIdle();
    EXPECT_TRUE(onScreen(dropbox));
}

TEST_F(RunningQuillet, QuittingReleasesTheTriggers) {
    launchAndSettle();
    quillet.delegate.applicationWillTerminate();
    EXPECT_EQ(quillet.world.pointer.monitorCount(), 0u);
    EXPECT_EQ(quillet.world.hotKeys.registrationCount(), 0u);
    EXPECT_EQ(quillet.world.hotKeys.handlerCount(), 0u);
    EXPECT_EQ(mac().observerCount(), 0u);
    mac().activateApplication(kWeather.bundleID);
    scheduler().runUntilIdle();
    EXPECT_FALSE(onScreen(weather));
}

// What an earlier run stored is what this launch starts from: no hover, ⌘⇧M, two spacers.
TEST(LaunchWithStoredPreferences, TakesTheHoverSwitchHotKeyAndSpacersFromThem) {
    sim::MemoryKeyValueStore stored;
    {
        AppPreferences earlierRun(stored);
        earlierRun.setAutoRehide(false);
        earlierRun.setHotKey(HotKeyOption::cmdShiftM);
        earlierRun.setSpacerCount(2);
        earlierRun.setSectionByBundleID({{kDropbox.bundleID, MenuBarSection::hidden}});
    }
    sim::SimulatedQuillet quillet({"Quillet"}, &stored);
    auto& mac = quillet.world.mac;
    const WindowID dropbox = mac.addApplicationItem(kDropbox, kDropbox.bundleID, 28);
    quillet.delegate.applicationDidFinishLaunching();
    quillet.world.scheduler.runUntilIdle();
    auto onScreen = [&] { return mac.statusItemFrame(dropbox)->maxX() > 0; };

    EXPECT_EQ(quillet.world.pointer.monitorCount(), 0u);
    EXPECT_TRUE(mac.ownStatusItem("quillet.spacer0") && mac.ownStatusItem("quillet.spacer1"));
    EXPECT_FALSE(mac.ownStatusItem("quillet.spacer2"));
    EXPECT_EQ(quillet.world.hotKeys.registrationCount(), 1u);
    quillet.world.hotKeys.press(kKeyB, kCommandShift);
    EXPECT_FALSE(onScreen());
    quillet.world.hotKeys.press(kKeyM, kCommandShift);
    EXPECT_TRUE(onScreen());
}

class LaunchedWithSettingsAndSelfTest : public RunningQuillet {
protected:
    LaunchedWithSettingsAndSelfTest()
        : RunningQuillet({"Quillet", "--nav-selftest", "--open-settings"}) {}
};

TEST_F(LaunchedWithSettingsAndSelfTest, SettingsOpenAtLaunchAndTheSelfTestTwoSecondsLater) {
    quillet.delegate.applicationDidFinishLaunching();
    EXPECT_EQ(settingsShown, 1);
    EXPECT_TRUE(quillet.delegate.controlManager && quillet.delegate.eventHub &&
                quillet.delegate.hotKey);
    scheduler().runUntilIdle();
    EXPECT_EQ(selfTests, 1);
    EXPECT_EQ(selfTestTime, 2000ms);
}

} // namespace
} // namespace quillet
