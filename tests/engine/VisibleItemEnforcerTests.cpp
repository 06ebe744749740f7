#include "engine/EngineScene.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace quillet::enginetests {
namespace {

using namespace std::chrono_literals;
using sim::SimulatedMac;
using ::testing::ElementsAre;

// The window list, noting when each whole list was read: one read is one scan.
class ReadTimedWindows : public WindowListSource {
public:
    ReadTimedWindows(const WindowListSource& inner, const Scheduler& scheduler)
        : inner_(inner), scheduler_(scheduler) {}
    bool visitWindowList(const Visitor& visit) const override {
        reads.push_back(scheduler_.now());
        return inner_.visitWindowList(visit);
    }
    bool visitWindowDescription(WindowID window, const Visitor& visit) const override {
        return inner_.visitWindowDescription(window, visit);
    }
    mutable std::vector<Duration> reads;

private:
    const WindowListSource& inner_;
    const Scheduler& scheduler_;
};

class VisibleItemEnforcerTest : public EngineScene {
protected:
    // Quillet arranged with Dropbox hidden, which seeds the enforcer, and started watching.
    void startArranged() {
        mac.addSystemItem("Battery", 42);
        mac.addApplicationItem(kDropbox, kDropbox.bundleID, 30);
        startQuillet();
        setRules({{kDropbox.bundleID, MenuBarSection::hidden}});
        manager->arrangeAndReapply({kDropbox.bundleID}, {});
        scheduler.runUntilIdle();
        enforcer.start();
    }
    WindowID launch(const SimulatedMac::Application& app) {
        return mac.launchApplication(app, {{app.bundleID, 30}}).front();
    }
};

TEST_F(VisibleItemEnforcerTest, ANewlyLaunchedItemGoesToTheZoneOfItsRule) {
    startArranged();
    setRules(
        {{kDropbox.bundleID, MenuBarSection::hidden}, {kDocker.bundleID, MenuBarSection::hidden}});
    const WindowID docker = launch(kDocker);
    const WindowID spotify = launch(kSpotify);
    // New items come in at the left end, beyond every border.
    ASSERT_EQ(zoneOf(spotify), MenuBarSection::alwaysHidden);
    scheduler.advance(2500ms);
    EXPECT_EQ(zoneOf(spotify), MenuBarSection::visible);
    EXPECT_TRUE(isOnScreen(spotify));
    EXPECT_EQ(zoneOf(docker), MenuBarSection::hidden);
    // The bar was collapsed, and is again.
    EXPECT_FALSE(manager->isExpanded());

    // Still there at the next launch's scans: not new any more.
    const std::size_t spotifyDrags = drags(spotify);
    launch(kWeather);
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(spotify), MenuBarSection::visible);
    EXPECT_EQ(drags(spotify), spotifyDrags);
}

// The menu bar remembers where an item was dropped last, so a relaunched application's item
// comes back in its zone; one that comes back elsewhere is placed again.
TEST_F(VisibleItemEnforcerTest, AnItemThatWentAwayIsNewAgainWhenItComesBack) {
    startArranged();
    launch(kSpotify);
    scheduler.runUntilIdle();
    mac.quitApplication(kSpotify.pid);
    // A scan while Spotify is gone forgets it.
    launch(kWeather);
    scheduler.runUntilIdle();
    const std::size_t dragsBefore = drags();
    WindowID spotify = launch(kSpotify);
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(spotify), MenuBarSection::visible);
    EXPECT_EQ(drags(), dragsBefore);

    // Quit and back before any scan, with a rule that hides it meanwhile.
    setRules(
        {{kDropbox.bundleID, MenuBarSection::hidden}, {kSpotify.bundleID, MenuBarSection::hidden}});
    mac.quitApplication(kSpotify.pid);
    spotify = launch(kSpotify);
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(spotify), MenuBarSection::hidden);
}

// Applications with two items, and an item no rule can name: every one lands by its rule, the
// nameless one in view.
TEST_F(VisibleItemEnforcerTest, EveryItemOfANewApplicationLandsByItsRule) {
    startArranged();
    setRules(
        {{kDropbox.bundleID, MenuBarSection::hidden}, {kStats.bundleID, MenuBarSection::hidden}});
    const auto stats =
        mac.launchApplication(kStats, {{kStats.bundleID, 24}, {kStats.bundleID, 30}});
    const auto spotify =
        mac.launchApplication(kSpotify, {{kSpotify.bundleID, 24}, {kSpotify.bundleID, 30}});
    const auto widget = mac.launchApplication(kWeather, {{"Weather Widget", 26}});
    scheduler.runUntilIdle();
    for (WindowID window : stats) {
        EXPECT_EQ(zoneOf(window), MenuBarSection::hidden);
    }
    for (WindowID window : spotify) {
        EXPECT_EQ(zoneOf(window), MenuBarSection::visible);
        EXPECT_TRUE(isOnScreen(window));
    }
    EXPECT_EQ(zoneOf(widget.front()), MenuBarSection::visible);
    EXPECT_TRUE(isOnScreen(widget.front()));
}

TEST_F(VisibleItemEnforcerTest, NothingIsPromotedBeforeTheFirstSeeding) {
    mac.addApplicationItem(kDropbox, kDropbox.bundleID, 30);
    startQuillet();
    enforcer.start();
    launch(kSpotify);
    scheduler.runUntilIdle();
    EXPECT_EQ(drags(), 0u);

    // Seeding takes what launched meanwhile as known.
    enforcer.seedFromCurrentItems();
    const WindowID weather = launch(kWeather);
    scheduler.runUntilIdle();
    // Never arranged, the control items came in out of order; the check after placing the item
    // ordered them.
    EXPECT_EQ(zoneOf(weather), MenuBarSection::visible);
    EXPECT_LT(mac.statusItemFrame(controlWindow(ControlItemManager::kAlwaysSeparatorName))->minX(),
              mac.statusItemFrame(controlWindow(ControlItemManager::kSeparatorName))->minX());
}

TEST_F(VisibleItemEnforcerTest, WithoutAControlItemManagerNewItemsAreOnlyNoted) {
    startArranged();
    const std::size_t dragsBefore = drags();
    manager.reset();
    launch(kSpotify);
    scheduler.runUntilIdle();
    EXPECT_EQ(drags(), dragsBefore);
}

class ScanTimingTest : public EngineScene {
protected:
    ReadTimedWindows windows{mac, scheduler};
    VisibleItemEnforcer timed{enforcerDependencies(windows, [] { return nullptr; })};
};

TEST_F(ScanTimingTest, ALaterLaunchRestartsTheSeriesTimedFromItself) {
    timed.seedFromCurrentItems();
    timed.start();
    mac.notify(WorkspaceEvent::didLaunchApplication);
    scheduler.advance(300ms);
    mac.notify(WorkspaceEvent::didLaunchApplication);
    scheduler.runUntilIdle();
    EXPECT_THAT(windows.reads, ElementsAre(0ms, 800ms, 1500ms, 2800ms));
}

TEST_F(ScanTimingTest, StartingTwiceWatchesOnceAndStoppingDropsThePendingScans) {
    timed.seedFromCurrentItems();
    timed.start();
    timed.start();
    EXPECT_EQ(mac.observerCount(), 1u);
    mac.notify(WorkspaceEvent::didLaunchApplication);
    scheduler.advance(600ms);
    timed.stop();
    EXPECT_EQ(mac.observerCount(), 0u);
    mac.notify(WorkspaceEvent::didLaunchApplication);
    scheduler.runUntilIdle();
    EXPECT_THAT(windows.reads, ElementsAre(0ms, 500ms));
}

TEST_F(ScanTimingTest, AnEnforcerDestroyedWithScansPendingIsLeftAlone) {
    auto shortLived = std::make_unique<VisibleItemEnforcer>(
        enforcerDependencies(windows, [] { return nullptr; }));
    shortLived->seedFromCurrentItems();
    shortLived->scheduleScan();
    shortLived.reset();
    scheduler.runUntilIdle();
    EXPECT_THAT(windows.reads, ElementsAre(0ms));
}

} // namespace
} // namespace quillet::enginetests
