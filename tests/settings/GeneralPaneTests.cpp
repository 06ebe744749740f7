#include "settings/SettingsScene.hpp"

#include "core/prefs/HotKeyOption.hpp"
#include "core/support/Text.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>

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
    EXPECT_EQ(spacersInBar(), 5);
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

// Seeded random use of the pane: whatever the user does, the window shows what is stored, and no
// profile is lost but by "Delete".
TEST_F(GeneralPane, WhateverTheUserDoesTheWindowShowsWhatIsStored) {
    std::mt19937 random(20261124);
    const std::vector<std::string> names{"Work", "Home", " Home\t", "work"};
    std::set<std::string> saved;
    auto pickAny = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    for (int action = 0; action < 150; ++action) {
        switch (pickAny(8)) {
        case 0:
            window().flip(pickAny(2) ? "Reveal on hover" : "Collapse at launch");
            break;
        case 1:
            window().step("Menu bar spacers", pickAny(2) ? 1 : -1);
            break;
        case 2:
            window().pick("Toggle hidden items",
                          std::string(title(allHotKeyOptions[pickAny(allHotKeyOptions.size())])));
            break;
        case 3: {
            const std::string& name = names[pickAny(names.size())];
            saveLayoutAs(name);
            saved.insert(std::string(trimmedSpacesAndTabs(name)));
            break;
        }
        case 4:
            window().pick(
                "Active profile",
                pickAny(3) == 0 || saved.empty()
                    ? "None"
                    : *std::next(saved.begin(), static_cast<long>(pickAny(saved.size()))));
            break;
        case 5:
            if (const std::string active = preferences().activeProfile(); !active.empty()) {
                window().press("Delete", "Delete “" + active + "”");
                saved.erase(active);
            }
            break;
        case 6:
            window().press("Save…");
            window().type("Unsaved");
            window().press("Cancel");
            break;
        default:
            window().selectPane("Permissions");
            window().selectPane("General");
            break;
        }
        settle();

        const AppPreferences& stored = preferences();
        EXPECT_THAT(row("Reveal on hover"), HasSubstr(stored.autoRehide() ? "[on]" : "[off]"));
        EXPECT_THAT(row("Collapse at launch"),
                    HasSubstr(stored.collapseAtLaunch() ? "[on]" : "[off]"));
        std::string hotKeyShown = "[";
        hotKeyShown += title(stored.hotKey());
        hotKeyShown += " ▾]";
        EXPECT_THAT(row("Toggle hidden items"), HasSubstr(hotKeyShown));
        EXPECT_GE(stored.spacerCount(), 0);
        EXPECT_LE(stored.spacerCount(), 5);
        EXPECT_EQ(spacersInBar(), stored.spacerCount());
        std::set<std::string> profiles;
        for (const auto& [name, rules] : stored.profiles()) {
            profiles.insert(name);
        }
        EXPECT_EQ(profiles, saved);
        const std::string active = stored.activeProfile();
        EXPECT_EQ(row("Active profile") == "(none)", saved.empty());
        if (!saved.empty()) {
            EXPECT_THAT(row("Active profile"),
                        HasSubstr("[" + (active.empty() ? "None" : active) + " ▾]"));
        }
        EXPECT_EQ(row("Delete “" + active + "”") != "(none)", !active.empty());
        ASSERT_FALSE(testing::Test::HasFailure()) << "after action " << action;
    }
}

} // namespace
} // namespace quillet::test
