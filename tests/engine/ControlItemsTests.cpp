#include "engine/EngineScene.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace quillet::enginetests {
namespace {

using namespace std::chrono_literals;
using sim::SimulatedMac;
using ::testing::ElementsAre;
using ::testing::Field;

constexpr ButtonEvent kLeftUp{2, 0};
constexpr ButtonEvent kRightUp{4, 0};
constexpr ButtonEvent kControlLeftUp{2, EventFlags::control};

SymbolImage quilletSymbol(const char* name) {
    return {name, "Quillet", true, std::nullopt, std::nullopt};
}

SymbolImage chevron(const char* name) {
    return {name, "Quillet", true, 18.0, SymbolWeight::black};
}

class ControlItemsTest : public EngineScene {
protected:
    ControlItemsTest() { startQuillet(); }

    std::shared_ptr<sim::SimStatusItem> alwaysSeparator() const {
        return control(ControlItemManager::kAlwaysSeparatorName);
    }
    std::shared_ptr<sim::SimStatusItem> separator() const {
        return control(ControlItemManager::kSeparatorName);
    }
    std::shared_ptr<sim::SimStatusItem> toggle() const {
        return control(ControlItemManager::kToggleName);
    }
    std::vector<std::string> menuTitles() const {
        std::vector<std::string> titles;
        for (const MenuEntry& entry : toggle()->shownMenu()->entries) {
            titles.push_back(entry.kind == MenuEntry::Kind::separator ? "---" : entry.title);
        }
        return titles;
    }
};

TEST_F(ControlItemsTest, StartsExpandedWithThreeItemsMadeLeftBorderFirst) {
    ASSERT_TRUE(alwaysSeparator() && separator() && toggle());
    // Windows are numbered in the order the items were made.
    EXPECT_LT(alwaysSeparator()->window(), separator()->window());
    EXPECT_LT(separator()->window(), toggle()->window());
    EXPECT_TRUE(manager->isExpanded());
    for (const auto& item : {alwaysSeparator(), separator(), toggle()}) {
        EXPECT_EQ(item->length(), kVariableStatusItemLength);
    }
    EXPECT_EQ(alwaysSeparator()->image(), quilletSymbol("minus"));
    EXPECT_EQ(alwaysSeparator()->toolTip(), std::nullopt);
    EXPECT_EQ(separator()->image(), quilletSymbol("ellipsis"));
    EXPECT_EQ(separator()->toolTip(), "Quillet — drag icons to the LEFT of this to hide them");
    EXPECT_EQ(toggle()->image(), chevron("chevron.right.circle.fill"));
    EXPECT_EQ(toggle()->toolTip(), "Quillet");
    EXPECT_EQ(toggle()->sendActionOnMask(), 20u);
}

TEST_F(ControlItemsTest, CollapsingHidesBothZonesAndExpandingBringsBackOnlyTheHiddenOne) {
    // A new item comes in at the left end: left of every border, in the always-hidden zone.
    const WindowID dropbox = mac.addApplicationItem(kDropbox, "com.getdropbox.dropbox", 30);
    manager->setAllRevealed(false);
    manager->setExpanded(false);
    EXPECT_EQ(alwaysSeparator()->length(), ControlItemManager::kHidingLength);
    EXPECT_EQ(separator()->length(), ControlItemManager::kHidingLength);
    EXPECT_EQ(alwaysSeparator()->image(), std::nullopt);
    EXPECT_EQ(separator()->image(), std::nullopt);
    EXPECT_EQ(toggle()->image(), chevron("chevron.left.circle.fill"));
    EXPECT_FALSE(isOnScreen(dropbox));

    manager->setExpanded(true);
    EXPECT_EQ(separator()->length(), kVariableStatusItemLength);
    EXPECT_EQ(separator()->image(), quilletSymbol("ellipsis"));
    EXPECT_EQ(alwaysSeparator()->length(), ControlItemManager::kHidingLength);
    EXPECT_EQ(toggle()->image(), chevron("chevron.right.circle.fill"));
    EXPECT_FALSE(isOnScreen(dropbox));

    manager->setAllRevealed(true);
    EXPECT_EQ(alwaysSeparator()->length(), kVariableStatusItemLength);
    EXPECT_EQ(alwaysSeparator()->image(), quilletSymbol("minus"));
    EXPECT_TRUE(isOnScreen(dropbox));
}

// A display wider than the hiding length: widening the separator leaves the hidden item in view.
// The toggle must not claim otherwise, and the user hears of it once, not at every press.
TEST_F(EngineScene, ACollapseThatLeavesTheHiddenZoneInViewIsUndoneAndToldOnce) {
    mac.setDisplays({makeRect(0, 0, 12000, 3000)});
    const WindowID dropbox = mac.addApplicationItem(kDropbox, "com.getdropbox.dropbox", 30);
    setRules({{"com.getdropbox.dropbox", MenuBarSection::hidden}});
    startQuillet();
    manager->arrangeAndReapply({"com.getdropbox.dropbox"}, {});
    scheduler.runUntilIdle();
    ASSERT_EQ(zoneOf(dropbox), MenuBarSection::hidden);
    EXPECT_TRUE(isOnScreen(dropbox));
    EXPECT_TRUE(manager->isExpanded());
    EXPECT_EQ(control(ControlItemManager::kSeparatorName)->length(), kVariableStatusItemLength);

    manager->toggle();
    EXPECT_FALSE(manager->isExpanded());
    scheduler.runUntilIdle();
    EXPECT_TRUE(manager->isExpanded());
    const auto told = std::count_if(log.lines().begin(), log.lines().end(), [](const auto& line) {
        return line.starts_with("Quillet: hiding did not work — com.getdropbox.dropbox is still");
    });
    EXPECT_EQ(told, 1);
    ASSERT_EQ(alerts.shown().size(), 1u);
    EXPECT_EQ(alerts.shown()[0].messageText, "Quillet could not hide your menu bar items");
}

TEST_F(ControlItemsTest, RightAndControlClicksOpenTheMenuWhileOtherClicksToggleTheHiddenZone) {
    EXPECT_TRUE(toggle()->click(kRightUp));
    EXPECT_TRUE(toggle()->shownMenu().has_value());
    EXPECT_TRUE(manager->isExpanded());
    toggle()->chooseMenuEntry("Keyboard Navigation"); // closes the menu
    EXPECT_TRUE(toggle()->click(kControlLeftUp));
    EXPECT_TRUE(toggle()->shownMenu().has_value());
    EXPECT_TRUE(manager->isExpanded());

    manager->setAllRevealed(false);
    EXPECT_TRUE(toggle()->click(kLeftUp));
    EXPECT_TRUE(manager->isExpanded());
    // A plain click never reveals the always-hidden zone.
    EXPECT_EQ(alwaysSeparator()->length(), ControlItemManager::kHidingLength);
    EXPECT_TRUE(toggle()->click(std::nullopt));
    EXPECT_FALSE(manager->isExpanded());
}

TEST_F(ControlItemsTest, TheMenuOpensBelowTheButtonAndReflectsTheStateAtEachOpening) {
    toggle()->click(kRightUp);
    EXPECT_THAT(menuTitles(),
                ElementsAre("Hide Menu Bar Items", "Keyboard Navigation", "---", "Settings…",
                            "Launch at Login", "Check for Updates…", "---", "Quit Quillet"));
    const auto& entries = toggle()->shownMenu()->entries;
    EXPECT_EQ(toggle()->shownMenu()->location, (Point{0, 24 + 5}));
    EXPECT_EQ(entries[3].keyEquivalent, ",");
    EXPECT_FALSE(entries[4].checked);
    EXPECT_EQ(entries[5].action, "checkForUpdates:");
    EXPECT_EQ(entries[5].target, MenuEntry::Target::updater);
    EXPECT_EQ(entries[7].action, "terminate:");
    EXPECT_EQ(entries[7].keyEquivalent, "q");
    EXPECT_EQ(entries[7].target, MenuEntry::Target::application);

    manager->setExpanded(false);
    loginItem.status_ = 1;
    toggle()->click(kRightUp);
    EXPECT_EQ(menuTitles().front(), "Show Menu Bar Items");
    EXPECT_TRUE(toggle()->shownMenu()->entries[4].checked);
    // Any status but "enabled" counts as off.
    loginItem.status_ = 2;
    toggle()->click(kRightUp);
    EXPECT_FALSE(toggle()->shownMenu()->entries[4].checked);
}

TEST_F(ControlItemsTest, MenuEntriesReachTheirActions) {
    auto choose = [&](const std::string& title) {
        toggle()->click(kRightUp);
        return toggle()->chooseMenuEntry(title);
    };
    // New items appear at the left end, so the toggle, made last, starts left of its separators:
    // hiding then would push the toggle itself off the bar. The arrangement puts them in order.
    ASSERT_TRUE(choose("Hide Menu Bar Items"));
    EXPECT_TRUE(manager->isExpanded());
    manager->arrangeAndReapply({}, {});
    scheduler.runUntilIdle();
    ASSERT_TRUE(choose("Hide Menu Bar Items"));
    EXPECT_FALSE(manager->isExpanded());
    ASSERT_TRUE(choose("Show Menu Bar Items"));
    EXPECT_TRUE(manager->isExpanded());

    ASSERT_TRUE(choose("Launch at Login"));
    EXPECT_EQ(loginItem.status_, 1);
    ASSERT_TRUE(choose("Launch at Login"));
    EXPECT_EQ(loginItem.status_, 0);

    ASSERT_TRUE(choose("Settings…"));
    ASSERT_TRUE(choose("Keyboard Navigation"));
    EXPECT_EQ(settingsOpened, 1);
    EXPECT_EQ(navigationsStarted, 1);
}

TEST_F(ControlItemsTest, LayoutJobsRunOneAtATimeInSubmissionOrder) {
    std::vector<std::string> events;
    auto note = [&](const std::string& what) {
        events.push_back(what + "@" + std::to_string(scheduler.now() / 1ms));
    };
    auto job = [&](std::string name, Duration length) {
        return [&, name, length]() -> Task<> {
            note(name + " start");
            co_await sleep(scheduler, length);
            note(name + " end");
        };
    };
    // A coroutine lambda's captures live in the lambda object, which the queue keeps alive.
    manager->enqueueLayout(job("first", 300ms));
    manager->enqueueLayout(job("second", 100ms));
    scheduler.advance(50ms);
    manager->enqueueLayout(job("third", 10ms));
    scheduler.runUntilIdle();
    manager->enqueueLayout(job("after a pause", 10ms));
    scheduler.runUntilIdle();
    EXPECT_THAT(events, ElementsAre("first start@0", "first end@300", "second start@300",
                                    "second end@400", "third start@400", "third end@410",
                                    "after a pause start@410", "after a pause end@420"));
}

TEST_F(ControlItemsTest, OwnItemFindsOnlyOurWindowsOnTheMainDisplay) {
    mac.addApplicationItem(kDropbox, "com.getdropbox.dropbox", 30);
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1920, 1080)});
    mac.addWindow(SimulatedMac::statusItemWindow(7, makeRect(3000, 0, 22, 24), kOwnPID, "Quillet",
                                                 "quillet.elsewhere"));

    auto found = manager->ownItem(ControlItemManager::kToggleName);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->windowID, toggle()->window());
    EXPECT_EQ(manager->ownItem("com.getdropbox.dropbox"), std::nullopt);
    EXPECT_EQ(manager->ownItem("quillet.elsewhere"), std::nullopt);
}

TEST_F(EngineScene, AClickOnTheToggleAfterTheManagerIsGoneDoesNothing) {
    startQuillet();
    auto toggle = control(ControlItemManager::kToggleName);
    manager.reset();
    // The status bar may outlive the manager.
    EXPECT_TRUE(toggle->click(kLeftUp));
    EXPECT_FALSE(toggle->shownMenu().has_value());
}

} // namespace
} // namespace quillet::enginetests
