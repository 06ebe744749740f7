#include "settings/SettingsScene.hpp"

#include "core/prefs/HotKeyOption.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace quillet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class GeneralPane : public SettingsScene {
protected:
    GeneralPane() {
        launch();
        openFromMenu();
    }
    void hoverMenuBar() { quillet.world.pointer.moveTo({1000, 975}); }
    void pointerAway() {
        quillet.world.pointer.moveTo({1000, 400});
        quillet.world.scheduler.advance(std::chrono::seconds(1));
    }
    long spacersInBar() {
        const std::string bar = mac().renderMenuBar();
        long count = 0;
        for (auto at = bar.find("<spacer"); at != std::string::npos;
             at = bar.find("<spacer", at + 1)) {
            ++count;
        }
        return count;
    }
    void saveLayoutAs(const std::string& typed) {
        ASSERT_TRUE(window().press("Save…"));
        ASSERT_TRUE(window().type(typed));
        ASSERT_TRUE(window().press("Save"));
        settle();
    }
};

TEST_F(GeneralPane, RevealOnHoverTurnedOffStopsHoverAndTurnedOnBringsItBack) {
    hoverMenuBar();
    EXPECT_TRUE(zoneOpen());
    pointerAway();
    EXPECT_FALSE(zoneOpen());

    ASSERT_TRUE(window().flip("Reveal on hover"));
    settle();
    EXPECT_THAT(row("Reveal on hover"), HasSubstr("[off]"));
    EXPECT_FALSE(preferences().autoRehide());
    hoverMenuBar();
    EXPECT_FALSE(zoneOpen());

    pointerAway();
    window().flip("Reveal on hover");
    settle();
    hoverMenuBar();
    EXPECT_TRUE(zoneOpen());
}

TEST_F(GeneralPane, TheSpacerStepperAddsSpacersUpToFiveAndShowsNoCount) {
    for (int click = 0; click < 7; ++click) {
        window().step("Menu bar spacers", +1);
        settle();
    }
    EXPECT_EQ(preferences().spacerCount(), 5);
    EXPECT_EQ(spacersInBar(), 5);
    EXPECT_THAT(row("Menu bar spacers"), Not(HasSubstr("5")));

    for (int click = 0; click < 7; ++click) {
        window().step("Menu bar spacers", -1);
        settle();
    }
    EXPECT_EQ(preferences().spacerCount(), 0);
    EXPECT_EQ(spacersInBar(), 0);
}

TEST_F(GeneralPane, APickedHotKeyTogglesTheHiddenZoneAndTheOldOneNoLonger) {
    ASSERT_TRUE(window().pick("Toggle hidden items", "⌃⌥B"));
    settle();
    EXPECT_THAT(row("Toggle hidden items"), HasSubstr("[⌃⌥B ▾]"));

    quillet.world.hotKeys.press(keyCode(HotKeyOption::cmdShiftB),
                                modifierMask(HotKeyOption::cmdShiftB));
    EXPECT_FALSE(zoneOpen());
    quillet.world.hotKeys.press(keyCode(HotKeyOption::controlOptionB),
                                modifierMask(HotKeyOption::controlOptionB));
    EXPECT_TRUE(zoneOpen());
}

TEST_F(GeneralPane, CollapseAtLaunchIsStoredForTheNextLaunch) {
    window().flip("Collapse at launch");
    settle();
    EXPECT_TRUE(preferences().collapseAtLaunch());
    EXPECT_EQ(quillet.world.defaults.value("quillet.collapsedAtLaunch"), StoredValue{true});
}

TEST_F(GeneralPane, LaunchAtLoginShowsWhatTheSystemRegisteredAfterEveryChange) {
    window().flip("Launch at login");
    settle();
    EXPECT_THAT(row("Launch at login"), HasSubstr("[on]"));
    EXPECT_EQ(quillet.world.loginItem.status(), sim::SimulatedLoginItem::kEnabled);

    // The system now refuses: turning it off fails, so the switch stays on.
    quillet.world.loginItem.refuseWith("Operation not permitted");
    window().flip("Launch at login");
    settle();
    EXPECT_THAT(row("Launch at login"), HasSubstr("[on]"));
    EXPECT_THAT(quillet.world.log.lines().back(),
                HasSubstr("[Quillet] LaunchAtLogin toggle failed: Operation not permitted"));
}

TEST_F(GeneralPane, ALoginItemRefusedOrHeldForApprovalFlipsTheSwitchBackOff) {
    quillet.world.loginItem.holdForApproval(true);
    window().flip("Launch at login");
    settle();
    EXPECT_THAT(row("Launch at login"), HasSubstr("[off]"));
    EXPECT_EQ(quillet.world.loginItem.status(), sim::SimulatedLoginItem::kRequiresApproval);

    quillet.world.loginItem.refuseWith("The operation couldn’t be completed.");
    window().flip("Launch at login");
    settle();
    EXPECT_THAT(row("Launch at login"), HasSubstr("[off]"));

    // Approved in System Settings while the window was closed: shown on reopening.
    window().close();
    quillet.world.loginItem.refuseWith(std::nullopt);
    quillet.world.loginItem.holdForApproval(false);
    quillet.world.loginItem.registerService();
    openFromMenu();
    EXPECT_THAT(row("Launch at login"), HasSubstr("[on]"));
}

TEST_F(GeneralPane, SavingALayoutTrimsTheNameMakesItActiveAndOffersToDeleteIt) {
    // No profiles yet: nothing to pick, and saving is the card's first row.
    EXPECT_EQ(row("Active profile"), "(none)");
    EXPECT_THAT(shown(), HasSubstr("PROFILES\n╭\n│ Save current layout"));

    saveLayoutAs(" \tWork  ");
    ASSERT_EQ(preferences().profiles().count("Work"), 1u);
    EXPECT_EQ(preferences().activeProfile(), "Work");
    EXPECT_THAT(row("Active profile"), HasSubstr("[Work ▾]"));
    EXPECT_THAT(row("Delete “Work”"), HasSubstr("[Delete]"));

    // The alert starts empty again, after saving as after cancelling.
    window().press("Save…");
    EXPECT_THAT(shown(), HasSubstr("┌ Save layout as\n│ Saves the current"));
    EXPECT_THAT(shown(), HasSubstr("│ [Profile name]"));
    window().type("Home");
    window().press("Cancel");
    window().press("Save…");
    EXPECT_THAT(shown(), HasSubstr("│ [Profile name]"));
    // The page cannot be used while the alert is open.
    EXPECT_FALSE(window().flip("Reveal on hover"));
    window().press("Cancel");
    EXPECT_EQ(preferences().profiles().size(), 1u);
}

TEST_F(GeneralPane, ANameOfSpacesOnlySavesNothingAndLosesNothing) {
    saveLayoutAs("Work");
    saveLayoutAs("   \t ");
    EXPECT_EQ(preferences().profiles().size(), 1u);
    EXPECT_EQ(preferences().activeProfile(), "Work");
    EXPECT_EQ(preferences().sectionByBundleID().at(kDropbox.bundleID), MenuBarSection::hidden);
}

TEST_F(GeneralPane, PickingAProfileRearrangesTheBarAndNoneKeepsTheRules) {
    saveLayoutAs("Hidden Dropbox");
    preferences().setSection(MenuBarSection::visible, kDropbox.bundleID);
    saveLayoutAs("All visible");
    settle();
    const std::string allVisible = mac().renderMenuBar();
    EXPECT_THAT(allVisible, HasSubstr("[Dropbox]"));

    ASSERT_TRUE(window().pick("Active profile", "Hidden Dropbox"));
    settle();
    EXPECT_THAT(mac().renderMenuBar(), HasSubstr("(Dropbox)"));
    EXPECT_THAT(row("Active profile"), HasSubstr("[Hidden Dropbox ▾]"));

    window().pick("Active profile", "None");
    settle();
    EXPECT_EQ(preferences().activeProfile(), "");
    EXPECT_EQ(row("Delete “Hidden Dropbox”"), "(none)");
    EXPECT_EQ(preferences().sectionByBundleID().at(kDropbox.bundleID), MenuBarSection::hidden);
}

TEST_F(GeneralPane, AnActiveProfileThatNoLongerExistsShowsNoChoiceAndCanBeCleared) {
    saveLayoutAs("Work");
    preferences().setActiveProfile("Gone");
    settle();
    EXPECT_THAT(row("Active profile"), HasSubstr("[ ▾]"));
    ASSERT_TRUE(window().press("Delete", "Delete “Gone”"));
    settle();
    EXPECT_EQ(preferences().activeProfile(), "");
    EXPECT_EQ(preferences().profiles().count("Work"), 1u);
}

TEST_F(GeneralPane, AStoredSpacerCountOutOfRangeStepsFromTheNearestEnd) {
    preferences().setSpacerCount(9);
    settle();
    window().step("Menu bar spacers", +1);
    EXPECT_EQ(preferences().spacerCount(), 9);
    window().step("Menu bar spacers", -1);
    settle();
    EXPECT_EQ(preferences().spacerCount(), 4);
}

TEST_F(GeneralPane, DeletingTheActiveProfileAsksNothingAndKeepsItsRulesInForce) {
    saveLayoutAs("Work");
    ASSERT_TRUE(window().press("Delete", "Delete “Work”"));
    settle();
    EXPECT_TRUE(preferences().profiles().empty());
    EXPECT_EQ(preferences().activeProfile(), "");
    EXPECT_EQ(preferences().sectionByBundleID().at(kDropbox.bundleID), MenuBarSection::hidden);
    EXPECT_THAT(mac().renderMenuBar(), HasSubstr("(Dropbox)"));
    EXPECT_EQ(row("Active profile"), "(none)");
}

} // namespace
} // namespace quillet::test
