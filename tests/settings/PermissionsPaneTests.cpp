#include "settings/SettingsScene.hpp"

#include <gmock/gmock.h>

namespace quillet::test {
namespace {

using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using Answer = sim::SimulatedPrivacyPrompts::Answer;

class PermissionsPane : public SettingsScene {
protected:
    // A Mac that has granted nothing yet, as on a first run.
    PermissionsPane() {
        mac().setAccessibilityTrusted(false);
        mac().setScreenRecordingAllowed(false);
        launch();
    }
    void openPermissions() {
        openFromMenu();
        ASSERT_TRUE(window().selectPane("Permissions"));
        settle();
    }
    sim::SimulatedPrivacyPrompts& prompts() { return quillet.world.privacyPrompts; }
    void advance(Duration time) { quillet.world.scheduler.advance(time); }
};

TEST_F(PermissionsPane, TheBannerAndRowsFollowWhatTheMacGrants) {
    openPermissions();
    EXPECT_THAT(shown(), HasSubstr("ⓘ Running without TCC"));
    EXPECT_THAT(row("Accessibility"), EndsWith("Not granted [Grant…]"));
    EXPECT_THAT(row("Screen Recording"), EndsWith("Not granted [Grant…]"));

    mac().setScreenRecordingAllowed(true);
    ASSERT_TRUE(window().press("Refresh"));
    EXPECT_THAT(shown(), HasSubstr("✓ Enough permission for identity"));
    EXPECT_THAT(row("Accessibility"), EndsWith("Not granted [Grant…]"));
    EXPECT_THAT(row("Screen Recording"), EndsWith(" Granted"));
}

TEST_F(PermissionsPane, AGrantMadeWhileTheWindowIsOpenShowsOnlyAfterRefreshOrReappearing) {
    openPermissions();
    mac().setAccessibilityTrusted(true);
    settle();
    EXPECT_THAT(row("Accessibility"), EndsWith("Not granted [Grant…]"));

    // Another pane and back reads again.
    window().selectPane("General");
    window().selectPane("Permissions");
    EXPECT_THAT(row("Accessibility"), EndsWith(" Granted"));

    // So does closing and reopening the window.
    mac().setAccessibilityTrusted(false);
    window().close();
    openFromMenu();
    EXPECT_THAT(row("Accessibility"), EndsWith("Not granted [Grant…]"));
}

TEST_F(PermissionsPane, GrantingAccessibilityAsksTheSystemWhoseLaterAnswerShowsOnRefresh) {
    prompts().answerAccessibility(Answer::grant);
    openPermissions();
    ASSERT_TRUE(window().press("Grant…", "Accessibility"));
    EXPECT_EQ(prompts().accessibilityPrompts(), 1);
    // The user answers in System Settings after the check: "Refresh" shows it.
    EXPECT_THAT(row("Accessibility"), EndsWith("Not granted [Grant…]"));
    settle();
    window().press("Refresh");
    EXPECT_THAT(row("Accessibility"), EndsWith(" Granted"));
    EXPECT_THAT(shown(), HasSubstr("✓ Enough permission for identity"));
}

TEST_F(PermissionsPane, AScreenRecordingAnswerShowsASecondLaterIfTheUserGaveItByThen) {
    prompts().answerScreenRecording(Answer::grant, 400ms);
    openPermissions();
    ASSERT_TRUE(window().press("Grant…", "Screen Recording"));
    advance(999ms);
    EXPECT_THAT(row("Screen Recording"), EndsWith("Not granted [Grant…]"));
    advance(1ms);
    EXPECT_THAT(row("Screen Recording"), EndsWith(" Granted"));
}

TEST_F(PermissionsPane, AScreenRecordingAnswerGivenLateWaitsForRefresh) {
    prompts().answerScreenRecording(Answer::grant, 1500ms);
    openPermissions();
    window().press("Grant…", "Screen Recording");
    advance(2s);
    EXPECT_THAT(row("Screen Recording"), EndsWith("Not granted [Grant…]"));
    window().press("Refresh");
    EXPECT_THAT(row("Screen Recording"), EndsWith(" Granted"));
}

TEST_F(PermissionsPane, ARefusedRequestLeavesTheRowAsItWasAndTheSystemDoesNotAskAgain) {
    prompts().answerScreenRecording(Answer::refuse);
    openPermissions();
    window().press("Grant…", "Screen Recording");
    advance(2s);
    window().press("Grant…", "Screen Recording");
    advance(2s);
    EXPECT_EQ(prompts().screenRecordingPrompts(), 1);
    EXPECT_THAT(row("Screen Recording"), EndsWith("Not granted [Grant…]"));
    EXPECT_THAT(shown(), HasSubstr("ⓘ Running without TCC"));
}

TEST_F(PermissionsPane, ARecheckDueAfterThePaneWasLeftChangesNothing) {
    openPermissions();
    window().press("Grant…", "Screen Recording");
    window().selectPane("General");
    const int renders = window().renderCount();
    advance(2s);
    EXPECT_EQ(window().renderCount(), renders);
}

// The General pane's banner reads the same grants, on appearing and when its button is pressed.
TEST_F(PermissionsPane, TheGeneralPaneBannerAsksForAccessibilityAndNamesTheGrantInForce) {
    openFromMenu();
    EXPECT_THAT(shown(), HasSubstr("⚠ Grant a permission for item names  [Permissions]"));
    mac().setScreenRecordingAllowed(true);
    ASSERT_TRUE(window().press("Permissions"));
    EXPECT_EQ(prompts().accessibilityPrompts(), 1);
    EXPECT_THAT(shown(), HasSubstr("✓ Item identity is available\n  Screen Recording is on"));

    mac().setAccessibilityTrusted(true);
    window().selectPane("Permissions");
    window().selectPane("General");
    EXPECT_THAT(shown(), HasSubstr("✓ Item identity is available\n  Accessibility is on"));
}

} // namespace
} // namespace quillet::test
