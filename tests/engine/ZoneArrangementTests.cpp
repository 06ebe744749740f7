#include "engine/EngineScene.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace quillet::enginetests {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

constexpr auto kAlways = MenuBarSection::alwaysHidden;
constexpr auto kHidden = MenuBarSection::hidden;
constexpr auto kVisible = MenuBarSection::visible;

class ZoneArrangementTest : public EngineScene {
protected:
    // Thirteen items besides the clock and Control Center, added from right to left since each
    // new item comes in at the left end; Quillet's items then come in left of them all.
    void populateMenuBar() {
        battery = mac.addSystemItem("Battery", 42);
        wifi = mac.addSystemItem("WiFi", 30);
        sound = mac.addSystemItem("Sound", 30);
        bluetooth = mac.addSystemItem("Bluetooth", 30);
        recording = mac.addSystemItem("AudioVideoModule", 30);
        focus = mac.addSystemItem("FocusModes", 30);
        dropbox = mac.addApplicationItem(kDropbox, kDropbox.bundleID, 30);
        onePassword = mac.addApplicationItem(kOnePassword, kOnePassword.bundleID, 28);
        docker = mac.addApplicationItem(kDocker, kDocker.bundleID, 30);
        slack = mac.addApplicationItem(kSlack, kSlack.bundleID, 26);
        spotify = mac.addApplicationItem(kSpotify, kSpotify.bundleID, 24);
        weather = mac.addApplicationItem(kWeather, kWeather.bundleID, 30);
        stats = mac.addApplicationItem(kStats, "Item-0", 60);
        startQuillet();
    }

    // Rules as the application derives its two key sets from them: dynamic items are laid out
    // hidden.
    void arrangeByRules(SectionRules rules) {
        ControlItemManager::RuleKeys hidden;
        ControlItemManager::RuleKeys alwaysHidden;
        for (const auto& [key, section] : rules) {
            if (section == kAlways) {
                alwaysHidden.insert(key);
            } else if (section != kVisible) {
                hidden.insert(key);
            }
        }
        setRules(std::move(rules));
        manager->arrangeAndReapply(hidden, alwaysHidden);
        scheduler.runUntilIdle();
    }

    MenuBarItem listed(WindowID window) const {
        for (const auto& item : ItemEnumerator(mac, mac, mac).rawItems(kOwnPID)) {
            if (item.windowID == window) {
                return item;
            }
        }
        return {};
    }

    // Runs one step of a layout job to its end.
    template <class Step> void runInQueue(Step step) {
        manager->enqueueLayout([step]() -> Task<> { co_await step(); });
        scheduler.runUntilIdle();
    }

    WindowID battery = 0, wifi = 0, sound = 0, bluetooth = 0, recording = 0, focus = 0, dropbox = 0,
             onePassword = 0, docker = 0, slack = 0, spotify = 0, weather = 0, stats = 0;
};

TEST_F(ZoneArrangementTest, ArrangementPutsEveryMovableItemIntoItsZoneAndCollapses) {
    populateMenuBar();
    const SectionRules rules{
        {"sys:Bluetooth", kHidden},       {kDropbox.bundleID, kHidden},
        {kDocker.bundleID, kHidden},      {kSlack.bundleID, MenuBarSection::dynamic},
        {kOnePassword.bundleID, kAlways}, {kWeather.bundleID, kAlways},
        {"sys:AudioVideoModule", kHidden}};
    arrangeByRules(rules);

    for (WindowID item : {bluetooth, dropbox, docker, slack}) {
        EXPECT_EQ(zoneOf(item), kHidden) << item;
    }
    for (WindowID item : {onePassword, weather}) {
        EXPECT_EQ(zoneOf(item), kAlways) << item;
    }
    for (WindowID item : {bluetooth, dropbox, docker, slack, onePassword, weather}) {
        EXPECT_FALSE(isOnScreen(item)) << item;
    }
    for (WindowID item : {battery, wifi, sound, recording, focus, spotify, stats}) {
        EXPECT_EQ(zoneOf(item), kVisible) << item;
        EXPECT_TRUE(isOnScreen(item)) << item;
    }
    EXPECT_THAT(log.lines(), ElementsAre("Quillet: refusing to hidden system item "
                                         "sys:AudioVideoModule (movable=true hideable=false)"));
    EXPECT_FALSE(manager->isExpanded());
    EXPECT_EQ(control(ControlItemManager::kAlwaysSeparatorName)->length(),
              ControlItemManager::kHidingLength);
    // The control items ended in their order, the toggle in view.
    const auto order = mac.menuBarOrder();
    auto at = [&](std::string_view name) {
        return std::find(order.begin(), order.end(), controlWindow(name)) - order.begin();
    };
    EXPECT_LT(at(ControlItemManager::kAlwaysSeparatorName), at(ControlItemManager::kSeparatorName));
    EXPECT_LT(at(ControlItemManager::kSeparatorName), at(ControlItemManager::kToggleName));
    EXPECT_TRUE(isOnScreen(controlWindow(ControlItemManager::kToggleName)));
}

// The always-hidden zone is emptied and refilled on every arrangement (its border first goes
// leftmost), so only that zone's items are dragged again; the rest is already in place.
TEST_F(ZoneArrangementTest, ASecondArrangementDragsOnlyToRefillTheAlwaysHiddenZone) {
    populateMenuBar();
    SectionRules rules{{"sys:Bluetooth", kHidden},
                       {kDropbox.bundleID, kHidden},
                       {kSlack.bundleID, MenuBarSection::dynamic}};
    arrangeByRules(rules);
    auto settledOrder = mac.menuBarOrder();
    std::size_t settledDrags = drags();
    arrangeByRules(rules);
    EXPECT_EQ(drags(), settledDrags);
    EXPECT_EQ(mac.menuBarOrder(), settledOrder);

    rules[kWeather.bundleID] = kAlways;
    rules[kOnePassword.bundleID] = kAlways;
    arrangeByRules(rules);
    settledOrder = mac.menuBarOrder();
    settledDrags = drags();
    const std::size_t borderDrags = drags(controlWindow(ControlItemManager::kAlwaysSeparatorName));
    arrangeByRules(rules);
    EXPECT_EQ(mac.menuBarOrder(), settledOrder);
    EXPECT_EQ(drags() - settledDrags, 3u);
    EXPECT_EQ(drags(controlWindow(ControlItemManager::kAlwaysSeparatorName)), borderDrags + 1);
}

TEST_F(ZoneArrangementTest, WithNothingToHideEverythingStaysRevealedUnlessCollapsingAtLaunch) {
    populateMenuBar();
    arrangeByRules({});
    EXPECT_TRUE(manager->isExpanded());
    EXPECT_EQ(control(ControlItemManager::kAlwaysSeparatorName)->length(),
              kVariableStatusItemLength);
    for (WindowID item : {dropbox, weather, battery}) {
        EXPECT_EQ(zoneOf(item), kVisible);
    }

    preferences.setCollapseAtLaunch(true);
    arrangeByRules({});
    EXPECT_FALSE(manager->isExpanded());
    EXPECT_EQ(control(ControlItemManager::kAlwaysSeparatorName)->length(),
              ControlItemManager::kHidingLength);
}

TEST_F(ZoneArrangementTest, WaitsForTheBarToSettleBeforeRevealingAndBeforeTheFirstDrag) {
    populateMenuBar();
    manager->setAllRevealed(false);
    manager->arrangeAndReapply({kDropbox.bundleID}, {});
    scheduler.advance(999ms);
    EXPECT_FALSE(manager->isExpanded());
    scheduler.advance(1ms);
    EXPECT_TRUE(manager->isExpanded());
    EXPECT_EQ(control(ControlItemManager::kAlwaysSeparatorName)->length(),
              kVariableStatusItemLength);
    scheduler.runUntilIdle();
    ASSERT_FALSE(mac.input().events().empty());
    EXPECT_EQ(mac.input().events().front().time, 1150ms);
}

TEST_F(ZoneArrangementTest, AKeyInBothSetsIsPlacedOnceAlwaysHidden) {
    populateMenuBar();
    setRules({{kDropbox.bundleID, kAlways}});
    manager->arrangeAndReapply({kDropbox.bundleID}, {kDropbox.bundleID});
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(dropbox), kAlways);
    EXPECT_EQ(drags(dropbox), 1u);
}

TEST_F(ZoneArrangementTest, AHiddenItemThatLandsPastTheAlwaysSeparatorPullsTheBorderAcross) {
    populateMenuBar();
    arrangeByRules({{kWeather.bundleID, kAlways}});
    manager->setAllRevealed(true);
    const WindowID border = controlWindow(ControlItemManager::kAlwaysSeparatorName);
    const std::size_t bordersBefore = drags(border);
    // The hidden zone is empty: a drop just left of the separator lands beyond its border.
    runInQueue([this] { return manager->place(kDropbox.bundleID, 0, kHidden); });
    EXPECT_EQ(zoneOf(dropbox), kHidden);
    EXPECT_EQ(drags(dropbox), 1u);
    EXPECT_EQ(drags(border), bordersBefore + 1);
}

TEST_F(ZoneArrangementTest, ProtectedSystemItemsAreRefusedWithTheReason) {
    populateMenuBar();
    // Comes in at the left end, among the always-hidden items.
    const WindowID faceTime = mac.addSystemItem("FaceTime", 30);
    manager->setAllRevealed(true);
    runInQueue([this] { return manager->place("sys:AudioVideoModule", 0, kHidden); });
    runInQueue([this] { return manager->place("sys:FaceTime", 0, kAlways); });
    runInQueue([this] { return manager->place("sys:Clock", 0, kVisible); });
    runInQueue([this] { return manager->place("sys:BentoBox", 0, MenuBarSection::dynamic); });
    EXPECT_EQ(drags(), 0u);
    EXPECT_THAT(log.lines(),
                ElementsAre("Quillet: refusing to hidden system item sys:AudioVideoModule "
                            "(movable=true hideable=false)",
                            "Quillet: refusing to alwaysHidden system item sys:FaceTime "
                            "(movable=true hideable=false)",
                            "Quillet: refusing to visible system item sys:Clock (movable=false "
                            "hideable=false)",
                            "Quillet: refusing to dynamic system item sys:BentoBox "
                            "(movable=false hideable=false)"));

    // Movable but not hideable: it may still be brought into view.
    runInQueue([this] { return manager->place("sys:FaceTime", 0, kVisible); });
    EXPECT_EQ(zoneOf(faceTime), kVisible);
    EXPECT_EQ(log.lines().size(), 4u);
}

TEST_F(ZoneArrangementTest, ItemsShownAsNewCollapseAgainOnlyWhenTheBarWasCollapsed) {
    populateMenuBar();
    arrangeByRules({{kDropbox.bundleID, kHidden}, {kDocker.bundleID, kHidden}});
    ASSERT_EQ(zoneOf(dropbox), kHidden);
    // The user has lifted Dropbox's rule, then Docker's.
    setRules({{kDocker.bundleID, kHidden}});
    manager->showNewlyVisible({listed(dropbox)});
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(dropbox), kVisible);
    EXPECT_FALSE(manager->isExpanded());
    EXPECT_FALSE(isOnScreen(docker));

    manager->setExpanded(true);
    setRules({});
    manager->showNewlyVisible({listed(docker)});
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(docker), kVisible);
    EXPECT_TRUE(manager->isExpanded());
    // Revealed for the move, the always-hidden zone stays revealed until the next collapse.
    EXPECT_EQ(control(ControlItemManager::kAlwaysSeparatorName)->length(),
              kVariableStatusItemLength);
}

TEST_F(ZoneArrangementTest, EnforcingRevealsMovesAfterAPauseAndCollapsesWhenItHid) {
    populateMenuBar();
    arrangeByRules({});
    ASSERT_TRUE(manager->isExpanded());
    const std::size_t events = mac.input().events().size();
    const Duration start = scheduler.now();
    // As the settings do when the user hides Spotify, and then shows it again.
    setRules({{kSpotify.bundleID, kHidden}});
    manager->enforce(kSpotify.bundleID, 0, kHidden);
    scheduler.runUntilIdle();
    ASSERT_GT(mac.input().events().size(), events);
    EXPECT_EQ(mac.input().events()[events].time - start, 160ms);
    EXPECT_EQ(zoneOf(spotify), kHidden);
    EXPECT_FALSE(manager->isExpanded());

    // Shown while collapsed: collapsed again afterwards. Shown while open: left open.
    setRules({});
    manager->enforce(kSpotify.bundleID, 0, kVisible);
    scheduler.runUntilIdle();
    EXPECT_EQ(zoneOf(spotify), kVisible);
    EXPECT_FALSE(manager->isExpanded());
    manager->setExpanded(true);
    ItemEnumerator enumerator(mac, mac, mac);
    manager->enforce(enumerator.logicalItems(kOwnPID).front(), kVisible);
    scheduler.runUntilIdle();
    EXPECT_TRUE(manager->isExpanded());
}

TEST_F(ZoneArrangementTest, WronglyHiddenItemsWithoutARuleAreBroughtBackIntoView) {
    populateMenuBar();
    arrangeByRules({{kDropbox.bundleID, kHidden}, {kDocker.bundleID, kHidden}});
    setRules({{kDocker.bundleID, kHidden}});
    manager->setAllRevealed(true);
    runInQueue([this] { return manager->placeMisplacedVisibleItems(); });
    EXPECT_EQ(zoneOf(dropbox), kVisible);
    EXPECT_EQ(zoneOf(docker), kHidden);
}

TEST_F(ZoneArrangementTest, AMissingControlItemIsReportedAndTheRestStillHappens) {
    populateMenuBar();
    mac.removeStatusItemWindow(controlWindow(ControlItemManager::kToggleName));
    arrangeByRules({{kDropbox.bundleID, kHidden}});
    EXPECT_THAT(log.lines(), ElementsAre("Quillet: not all control items found at arrange time "
                                         "— zone layout may be unestablished"));
    EXPECT_EQ(zoneOf(dropbox), kHidden);
}

TEST_F(ZoneArrangementTest, ADragThatDoesNotLandIsReportedAndTheArrangementGoesOn) {
    populateMenuBar();
    arrangeByRules({});
    manager->setAllRevealed(true);
    const auto separator = controlWindow(ControlItemManager::kSeparatorName);
    // The user holds the button during the first placement only.
    mac.setLeftButtonHeld(true);
    manager->enqueueLayout([this]() -> Task<> {
        co_await manager->place(kDropbox.bundleID, 0, kHidden);
        mac.setLeftButtonHeld(false);
        co_await manager->place(kDocker.bundleID, 0, kHidden);
    });
    scheduler.runUntilIdle();
    EXPECT_THAT(log.lines(),
                ElementsAre("Quillet: move of window " + std::to_string(dropbox) + " left of " +
                            std::to_string(separator) + " did not land"));
    EXPECT_EQ(zoneOf(dropbox), kVisible);
    EXPECT_EQ(zoneOf(docker), kHidden);
}

// Jobs from the settings, the enforcer and the delegate share one queue.
TEST_F(ZoneArrangementTest, JobsFromSeveralPlacesRunOneAtATimeInTheOrderTheyCameIn) {
    populateMenuBar();
    const MenuBarItem dropboxItem = listed(dropbox);
    std::vector<std::pair<std::string, std::size_t>> marks;
    // Each mark notes the drags so far; the rules change between the jobs as the settings
    // would change them.
    auto mark = [&](std::string name, SectionRules next) {
        manager->enqueueLayout([&, name, next]() -> Task<> {
            marks.emplace_back(name, drags());
            setRules(next);
            co_return;
        });
    };
    setRules({{kDropbox.bundleID, kHidden}, {kDocker.bundleID, kHidden}});
    manager->arrangeAndReapply({kDropbox.bundleID, kDocker.bundleID}, {});
    mark("arranged",
         {{kDropbox.bundleID, kHidden}, {kDocker.bundleID, kHidden}, {kSpotify.bundleID, kHidden}});
    manager->enforce(kSpotify.bundleID, 0, kHidden);
    mark("enforced", {{kDocker.bundleID, kHidden}, {kSpotify.bundleID, kHidden}});
    manager->showNewlyVisible({dropboxItem});
    mark("shown", {{kDocker.bundleID, kHidden}, {kSpotify.bundleID, kHidden}});
    scheduler.runUntilIdle();

    ASSERT_EQ(marks.size(), 3u);
    EXPECT_EQ(marks[0].first, "arranged");
    EXPECT_EQ(marks[1].first, "enforced");
    EXPECT_EQ(marks[2].first, "shown");
    EXPECT_EQ(marks[2].second, drags());
    EXPECT_EQ(marks[1].second - marks[0].second, 1u);
    EXPECT_EQ(marks[2].second - marks[1].second, 1u);
    EXPECT_EQ(drags(spotify), 1u);
    EXPECT_EQ(zoneOf(spotify), kHidden);
    EXPECT_EQ(zoneOf(dropbox), kVisible);
    EXPECT_EQ(zoneOf(docker), kHidden);
}

} // namespace
} // namespace quillet::enginetests
