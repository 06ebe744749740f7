#include "settings/SettingsScene.hpp"

#include <gmock/gmock.h>

namespace quillet::test {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

// The Items pane over the scene's bar: Slack and Dropbox, Battery and Control Center and the
// clock, both grants given unless a test withdraws them.
class ItemsPane : public SettingsScene {
protected:
    inline static const sim::SimulatedMac::Application kMusic{"com.apple.Music", "Music", 703};

    // Opens the pane; `settling` lets every retry run out.
    void openItems(bool settling = true) {
        launch();
        openFromMenu();
        ASSERT_TRUE(window().selectPane("Menu Bar Items"));
        if (settling) {
            settle();
        }
    }
    void advance(Duration time) { quillet.world.scheduler.advance(time); }
    // The bar with the zones' borders, as the simulated Mac draws it.
    std::string bar() { return mac().renderMenuBar(); }
    // The part of the bar left of the always-hidden separator.
    std::string alwaysHiddenZone() { return bar().substr(0, bar().find("<alwaysSeparator")); }
    std::string hiddenZone() {
        const std::string text = bar();
        const auto start = text.find("<alwaysSeparator");
        return text.substr(start, text.find("<separator") - start);
    }
};

TEST_F(ItemsPane, ListsAppsApartFromMacOSSortedWithWhatEachCanBe) {
    mac().installApplication(kMusic.bundleID, "/System/Applications/Music.app");
    mac().addApplicationItem(kMusic, kMusic.bundleID, 24);
    mac().addSystemItem("Battery", 42);
    openItems();
    const std::string text = shown();
    // Apps first, sorted by name; an Apple app's item goes with the system's yet keeps "Auto".
    EXPECT_THAT(text, HasSubstr("APPS\n╭\n│ ◆ Dropbox"));
    EXPECT_LT(text.find("◆ Dropbox"), text.find("◆ Slack"));
    EXPECT_LT(text.find("MACOS"), text.find("◆ Music"));
    EXPECT_THAT(row("Music"), EndsWith("[*Show*|Hide|Always|Auto]"));
    EXPECT_THAT(row("Dropbox"), EndsWith("[Show|*Hide*|Always|Auto]"));
    // A system item offers three sections; one macOS keeps in place offers none.
    EXPECT_THAT(row("Battery"), EndsWith("[*Show*|Hide|Always]"));
    EXPECT_THAT(row("Clock"), EndsWith("(Always visible)"));
    EXPECT_THAT(text, HasSubstr("Some system items can’t move — macOS keeps them fixed."));
}

// On macOS 27 the system hosts the bar and Quillet moves nothing: the pane says what each rule
// comes to there, before anything else.
TEST_F(ItemsPane, OnTheHostedBarEachRuleSaysWhatItDoesOnThisMac) {
    mac().setMenuBarKind(BarKind::hosted);
    quillet.world.process.setOperatingSystemMajorVersion(27);
    openItems();
    const std::string text = shown();
    EXPECT_THAT(text, HasSubstr("ON THIS MAC"));
    EXPECT_THAT(text, HasSubstr("Hidden while collapsed once you ⌘-drag it left of ••• yourself."));
    EXPECT_THAT(text, HasSubstr("turn off “Allow in the Menu Bar” for its app."));
    EXPECT_THAT(text, HasSubstr("the hidden items show while its app is in front."));
    EXPECT_LT(text.find("ON THIS MAC"), text.find("Stays in the menu bar."));
    // The items are the host's: each application's, but not Apple's menu extras, which no
    // rule reaches there.
    EXPECT_LT(text.find("Stays in the menu bar."), text.find("◆ Dropbox"));
    EXPECT_THAT(row("Slack"), EndsWith("[*Show*|Hide|Always|Auto]"));
    EXPECT_THAT(text, Not(HasSubstr("Clock")));
    ASSERT_TRUE(window().pick("Slack", "Auto"));
    settle();
    EXPECT_EQ(quillet.services.preferences().sectionByBundleID().at("com.tinyspeck.slackmacgap"),
              MenuBarSection::dynamic);
}

TEST_F(ItemsPane, LongNamesKeepToOneLineAndLongIdentifiersKeepBothEnds) {
    const sim::SimulatedMac::Application helper{
        "com.example.enterprise.productivity.suite.menubar.helper", "Helper", 704};
    mac().installApplication(helper.bundleID,
                             "/Applications/An Enterprise Productivity Suite With A Very Long "
                             "Name.app");
    mac().setRunningProcesses(helper.bundleID, {helper.pid});
    mac().addApplicationItem(helper, helper.bundleID, 24);
    openItems();
    EXPECT_THAT(shown(), HasSubstr("│ ◆ An Enterprise Productivity Suite With A…"));
    // The identifier's start and end both show, with an ellipsis for what is cut between them.
    const std::string text = shown();
    const auto start = text.find("│   com.example.");
    ASSERT_NE(start, std::string::npos);
    const std::string line = text.substr(start, text.find('\n', start) - start);
    EXPECT_THAT(line, HasSubstr("…"));
    EXPECT_THAT(line, EndsWith(".menubar.helper"));
}

TEST_F(ItemsPane, SearchMatchesNamesAndBundleIdentifiersInAnyCase) {
    openItems();
    // Of Slack, Dropbox, Control Center and the clock.
    ASSERT_TRUE(window().search("  DROP "));
    EXPECT_THAT(shown(), HasSubstr("\n1 of 4 items\n"));
    EXPECT_THAT(shown(), HasSubstr("◆ Dropbox"));
    EXPECT_THAT(shown(), Not(HasSubstr("◆ Slack")));
    EXPECT_THAT(shown(), Not(HasSubstr("MACOS")));

    ASSERT_TRUE(window().search("tinyspeck"));
    EXPECT_THAT(shown(), HasSubstr("◆ Slack"));

    // Nothing found: no card at all; spaces alone are a search too, matching everything.
    ASSERT_TRUE(window().search("no such item"));
    EXPECT_THAT(shown(), HasSubstr("\n0 of "));
    EXPECT_THAT(shown(), Not(HasSubstr("APPS")));
    ASSERT_TRUE(window().search("   "));
    EXPECT_THAT(shown(), HasSubstr("\n4 of 4 items\n"));

    ASSERT_TRUE(window().clearSearch());
    EXPECT_THAT(shown(), HasSubstr("🔍 [Search menu bar items] [(arrow.clockwise)]"));
    EXPECT_FALSE(window().clearSearch());
}

TEST_F(ItemsPane, SystemItemsShowTheirSymbolUntilTheirSnapshotArrives) {
    mac().addSystemItem("Battery", 42);
    openItems(false);
    // The capture runs off the main thread; the list is there before it.
    EXPECT_THAT(row("Battery"), StartsWith("(battery.100) Battery"));
    EXPECT_THAT(row("Slack"), StartsWith("◆ Slack"));
    settle();
    EXPECT_THAT(row("Battery"), StartsWith("▣ Battery"));

    // Searched away and back, the row captures again; the search field is never held up.
    ASSERT_TRUE(window().search("slack"));
    ASSERT_TRUE(window().search("batt"));
    EXPECT_THAT(row("Battery"), StartsWith("(battery.100) Battery"));
    settle();
    EXPECT_THAT(row("Battery"), StartsWith("▣ Battery"));
}

TEST_F(ItemsPane, WithoutAnyGrantTheNamesAreLockedAndAccessibilityNamesTheApps) {
    mac().setScreenRecordingAllowed(false);
    mac().setAccessibilityTrusted(false);
    quillet.world.privacyPrompts.answerAccessibility(sim::SimulatedPrivacyPrompts::Answer::grant);
    openItems();
    // The windows are there, but nothing could be named: both banners, the warning first.
    const std::string text = shown();
    EXPECT_THAT(text, HasSubstr("items detected — names locked  [Accessibility]"));
    EXPECT_LT(text.find("names locked"), text.find("ⓘ No menu bar items yet"));

    // Accessibility asked for and given: the warning goes. On macOS 26 the window list still
    // names nothing, but the applications say where their items are, so they can be ruled;
    // the system's items wait for Screen Recording.
    ASSERT_TRUE(window().press("Accessibility"));
    settle();
    EXPECT_EQ(quillet.world.privacyPrompts.accessibilityPrompts(), 1);
    window().press("Refresh list");
    EXPECT_THAT(shown(), Not(HasSubstr("names locked")));
    EXPECT_THAT(shown(), HasSubstr("2 items\n"));
    EXPECT_THAT(shown(), HasSubstr("◆ Slack"));
    mac().setScreenRecordingAllowed(true);
    window().press("Refresh list");
    EXPECT_THAT(shown(), HasSubstr("MACOS"));
}

TEST_F(ItemsPane, ItemsNamedWithoutAGrantSayThatIdentificationNeedsOne) {
    // A window the window server described with its title, as a recording keeps it.
    mac().setRunningProcesses(kMusic.bundleID, {kMusic.pid});
    mac().addWindow(sim::SimulatedMac::statusItemWindow(90, makeRect(1200, 0, 24, 24), kMusic.pid,
                                                        "Music", "Music"));
    mac().setScreenRecordingAllowed(false);
    mac().setAccessibilityTrusted(false);
    openItems();
    EXPECT_THAT(shown(), HasSubstr(" items (identification needs permission)\n"));
    // Without a bundle identifier it has no rule to pick: an app item with nothing to choose.
    EXPECT_THAT(shown(), HasSubstr("APPS\n╭\n│ ◆ Music\n│   Music\n╰"));
}

TEST_F(ItemsPane, AnEmptyBarIsLookedAtAgainForTwoSecondsThenOnlyOnRefresh) {
    mac().setWindowListAvailable(false);
    openItems(false);
    EXPECT_THAT(shown(), HasSubstr("ⓘ No menu bar items yet"));
    // Within the retries, the items show by themselves.
    advance(1900ms);
    mac().setWindowListAvailable(true);
    advance(250ms);
    EXPECT_THAT(shown(), HasSubstr("◆ Slack"));

    // Past them, only "Refresh list" finds them.
    mac().setWindowListAvailable(false);
    window().selectPane("General");
    window().selectPane("Menu Bar Items");
    advance(2100ms);
    mac().setWindowListAvailable(true);
    advance(5s);
    EXPECT_THAT(shown(), HasSubstr("ⓘ No menu bar items yet"));
    ASSERT_TRUE(window().press("Refresh list"));
    EXPECT_THAT(shown(), HasSubstr("◆ Slack"));
}

TEST_F(ItemsPane, PickingASectionStoresTheRuleAndMovesTheItem) {
    openItems();
    ASSERT_TRUE(window().pick("Slack", "Always"));
    settle();
    EXPECT_EQ(preferences().sectionByBundleID().at(kSlack.bundleID), MenuBarSection::alwaysHidden);
    EXPECT_THAT(alwaysHiddenZone(), HasSubstr("Slack"));
    EXPECT_THAT(row("Slack"), EndsWith("[Show|Hide|*Always*|Auto]"));

    // "Auto": hidden, and out only while Slack is frontmost.
    ASSERT_TRUE(window().pick("Slack", "Auto"));
    settle();
    EXPECT_EQ(preferences().sectionByBundleID().at(kSlack.bundleID), MenuBarSection::dynamic);
    EXPECT_THAT(hiddenZone(), HasSubstr("Slack"));
    mac().activateApplication(kSlack.bundleID);
    settle();
    EXPECT_THAT(hiddenZone(), Not(HasSubstr("Slack")));
    EXPECT_THAT(alwaysHiddenZone(), Not(HasSubstr("Slack")));
    mac().activateApplication(kDropbox.bundleID);
    settle();
    EXPECT_THAT(hiddenZone(), HasSubstr("Slack"));
}

TEST_F(ItemsPane, ARuleIsStoredEvenWhenNothingCanBeMoved) {
    openItems();
    // Slack quit after the list was read: its row stays until the list is read again.
    mac().quitApplication(kSlack.pid);
    settle();
    const std::string withoutSlack = bar();
    const std::size_t logged = quillet.world.log.lines().size();
    ASSERT_TRUE(window().pick("Slack", "Always"));
    settle();
    EXPECT_EQ(preferences().sectionByBundleID().at(kSlack.bundleID), MenuBarSection::alwaysHidden);
    // The move is skipped in silence.
    EXPECT_EQ(bar(), withoutSlack);
    EXPECT_EQ(quillet.world.log.lines().size(), logged);

    // Without a control item manager, the rule is all there is.
    quillet.delegate.controlManager.reset();
    settle();
    const std::string withoutManager = bar();
    ASSERT_TRUE(window().pick("Dropbox", "Always"));
    settle();
    EXPECT_EQ(preferences().sectionByBundleID().at(kDropbox.bundleID),
              MenuBarSection::alwaysHidden);
    EXPECT_EQ(bar(), withoutManager);
}

} // namespace
} // namespace quillet::test
