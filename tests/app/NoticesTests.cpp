#include "core/app/Notices.hpp"
#include "sim/app/SimulatedWorld.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using ::testing::ElementsAre;

Notice switchedOffNotice() {
    return {.key = "switched off",
            .line = "Quillet: the menu bar does not show Quillet",
            .alert = {.messageText = "Quillet is not in the menu bar",
                      .informativeText = "Turn it on in System Settings.",
                      .buttons = {"Open Menu Bar Settings", "Not Now"}},
            .url = "x-apple.systempreferences:com.apple.MenuBarSettings"};
}

TEST(Notices, TellTheUserOncePerSubjectAndOpenThePageOnlyWhenAsked) {
    sim::SimulatedWorld world;
    Notices notices(world.alerts, world.mac, world.log);

    EXPECT_TRUE(notices.post(switchedOffNotice()));
    EXPECT_FALSE(notices.post(switchedOffNotice()));
    Notice other = switchedOffNotice();
    other.key = "other";
    EXPECT_TRUE(notices.post(other));

    EXPECT_THAT(world.log.lines(), ElementsAre("Quillet: the menu bar does not show Quillet",
                                               "Quillet: the menu bar does not show Quillet"));
    ASSERT_EQ(world.alerts.shown().size(), 2u);
    EXPECT_EQ(world.alerts.shown()[0], switchedOffNotice().alert);

    EXPECT_TRUE(world.alerts.choose(1));
    EXPECT_TRUE(world.mac.openedURLs().empty());
    EXPECT_TRUE(world.alerts.choose(0));
    EXPECT_THAT(world.mac.openedURLs(),
                ElementsAre("x-apple.systempreferences:com.apple.MenuBarSettings"));
    EXPECT_FALSE(world.alerts.choose(0));
}

} // namespace
} // namespace quillet
