// Quillet on the hosted menu bar of macOS 27, told as one user's day with it: the launch, the
// user's own drags that Quillet asks for, a hot key collapse that sends the hidden items into the
// system's overflow, a reveal, and an Auto application coming to the front. Every collapse is
// checked on the host's bar, and no item of ours ever gets long enough to be dropped.

#include "app/HostedBarStage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet::apptests {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const HostedBarStage::Application kSpotify{"com.spotify.client", "Spotify", 705};
const HostedBarStage::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const HostedBarStage::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 704};
const HostedBarStage::Application kWeather{"com.example.weather", "Weather", 706};

TEST(HostedBarStory, HidesIntoTheOverflowOnceTheUserHasPutTheItemsInPlace) {
    HostedBarStage stage(BarKind::hosted);
    const WindowID spotify = stage.addApplication(kSpotify);
    const WindowID dropbox = stage.addApplication(kDropbox);
    const WindowID slack = stage.addApplication(kSlack);
    stage.addApplication(kWeather);
    stage.preferences().setSectionByBundleID({{kSpotify.bundleID, MenuBarSection::visible},
                                              {kDropbox.bundleID, MenuBarSection::hidden},
                                              {kSlack.bundleID, MenuBarSection::dynamic},
                                              {kWeather.bundleID, MenuBarSection::alwaysHidden}});

    // Launch: nothing is dragged, and the user learns what only they can do.
    stage.launch();
    EXPECT_EQ(stage.manager().barKind(), BarKind::hosted);
    EXPECT_EQ(stage.mac().ignoredSyntheticDrags(), 0);
    EXPECT_THAT(stage.mac().input().events(), IsEmpty());
    // Quillet's own items came in at the left end, the toggle leftmost: no collapse would keep it.
    EXPECT_TRUE(stage.manager().isExpanded());
    ASSERT_EQ(stage.alerts().shown().size(), 3u);
    EXPECT_EQ(stage.alerts().shown()[0].messageText,
              "Drag Quillet's toggle right of its separator");
    EXPECT_EQ(stage.alerts().shown()[1].messageText,
              "Drag Dropbox and Slack left of Quillet's separator");
    EXPECT_THAT(stage.alerts().shown()[2].informativeText, HasSubstr("“Allow in the Menu Bar”"));
    for (int alert = 0; alert < 3; ++alert) {
        stage.alerts().choose(0);
    }
    EXPECT_THAT(stage.mac().openedURLs(),
                ElementsAre("x-apple.systempreferences:com.apple.MenuBarSettings"));
    EXPECT_LT(stage.longestOwnLength(), stage.dropThreshold());

    // The user puts the toggle at the right and the separator right of Dropbox and Slack.
    stage.dragRightOf(stage.own(ControlItemManager::kToggleName), spotify);
    stage.dragLeftOf(stage.own(ControlItemManager::kSeparatorName), spotify);

    // One separator under the limit cannot push them past the app menus: the bar opens again
    // and says so, with extra separators for the user to place.
    stage.pressHotKey();
    EXPECT_TRUE(stage.manager().isExpanded());
    EXPECT_TRUE(stage.slot(dropbox));
    EXPECT_THAT(stage.logLines(), Contains(HasSubstr("Quillet: hiding did not work — Dropbox")));
    EXPECT_LT(stage.longestOwnLength(), stage.dropThreshold());
    const WindowID second = stage.own("quillet.separator.2");
    const WindowID third = stage.own("quillet.separator.3");
    stage.dragRightOf(second, stage.own(ControlItemManager::kSeparatorName));
    stage.dragRightOf(third, second);

    // Now the hot key hides them into the overflow, Spotify stays, and nothing of ours is dropped.
    stage.pressHotKey();
    EXPECT_FALSE(stage.manager().isExpanded());
    EXPECT_FALSE(stage.slot(dropbox));
    EXPECT_FALSE(stage.slot(slack));
    EXPECT_TRUE(stage.slot(spotify));
    EXPECT_TRUE(stage.slot(stage.own(ControlItemManager::kToggleName)));
    EXPECT_LT(stage.longestOwnLength(), stage.dropThreshold());

    // Revealed by the hot key.
    stage.pressHotKey();
    EXPECT_TRUE(stage.manager().isExpanded());
    EXPECT_TRUE(stage.slot(dropbox) && stage.slot(slack));

    // Collapsed again, then Slack (Auto) comes to the front: the hidden section shows while it is
    // there, and hides again when another application takes its place.
    stage.pressHotKey();
    ASSERT_FALSE(stage.slot(slack));
    stage.activate(kSlack.bundleID);
    EXPECT_TRUE(stage.manager().isExpanded());
    EXPECT_TRUE(stage.slot(slack));
    stage.activate("com.apple.finder");
    EXPECT_FALSE(stage.manager().isExpanded());
    EXPECT_FALSE(stage.slot(slack));
    EXPECT_EQ(stage.mac().ignoredSyntheticDrags(), 0);
    EXPECT_LT(stage.longestOwnLength(), stage.dropThreshold());
}

} // namespace
} // namespace quillet::apptests
