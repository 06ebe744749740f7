#include "settings/SettingsScene.hpp"

#include "core/ports/ApplicationShell.hpp"

#include <gmock/gmock.h>

namespace quillet::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

using SettingsWindow = SettingsScene;

// The window's centre in AppKit coordinates.
Point centreOf(sim::SimSettingsWindow& window) {
    const Size frame = window.frameSize();
    return {window.origin().x + frame.width / 2, window.origin().y + frame.height / 2};
}

TEST_F(SettingsWindow, OpensFromTheMenuWithADockIconAndLeavesTheDockWhenClosed) {
    launch();
    EXPECT_EQ(quillet.world.settingsWindows.createdCount(), 0u);
    openFromMenu();

    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(quillet.world.application.activationPolicy(), ActivationPolicy::regular);
    EXPECT_TRUE(quillet.world.application.isActive());
    EXPECT_EQ(window().render()[0], "═══ Quillet Settings ═══");
    EXPECT_EQ(window().render()[1], "▸ General   Menu Bar Items   Permissions");

    window().close();
    EXPECT_EQ(quillet.world.application.activationPolicy(), ActivationPolicy::accessory);

    // Reopening brings the same window back, Dock icon and all.
    openFromMenu();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(quillet.world.settingsWindows.createdCount(), 1u);
    EXPECT_EQ(quillet.world.application.activationPolicy(), ActivationPolicy::regular);
}

TEST_F(SettingsWindow, KeepsThePaneTheUserChoseAcrossClosingAndComesForwardEvenWhenNotActivated) {
    launch();
    quillet.world.application.refuseActivation(true);
    openFromMenu();
    ASSERT_TRUE(window().selectPane("Permissions"));
    settle();
    window().close();
    openFromMenu();

    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(quillet.world.application.isActive());
    EXPECT_EQ(window().render()[1], "General   Menu Bar Items   ▸ Permissions");
}

TEST_F(SettingsWindow, CentresOnTheVisibleFrameOfTheScreenUnderThePointerOnEveryShow) {
    // A second display to the right of the main one, its top aligned with it.
    mac().setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1920, 1080)});
    launch();
    const auto screens = mac().screens();

    for (const Point pointer : {Point{2000, 500}, Point{300, 300}, Point{5000, 5000}}) {
        mac().setPointerLocation(pointer);
        openFromMenu(); // also while open: it moves, there is still one window
        // Off every screen, the main screen takes the window.
        const Screen& target = screens[1].frame.contains(pointer) ? screens[1] : screens[0];
        EXPECT_EQ(centreOf(window()), target.visibleFrame.center()) << pointer.x;
    }
    EXPECT_EQ(quillet.world.settingsWindows.createdCount(), 1u);

    // Without any screen the window stays where it was.
    const Point before = window().origin();
    mac().setDisplays({});
    openFromMenu();
    EXPECT_EQ(window().origin(), before);
}

// Launched with "--open-settings" and "--tab=…" arguments.
class OpenedAtLaunch
    : public SettingsScene,
      public ::testing::WithParamInterface<std::pair<std::vector<std::string>, std::string>> {
protected:
    OpenedAtLaunch() : SettingsScene(arguments()) {}
    static std::vector<std::string> arguments() {
        std::vector<std::string> all{"Quillet", "--open-settings"};
        for (const auto& tab : GetParam().first) {
            all.push_back(tab);
        }
        return all;
    }
};

TEST_P(OpenedAtLaunch, OpensOnThePaneTheFirstTabArgumentNamesExactly) {
    launch();
    ASSERT_TRUE(window().isVisible());
    EXPECT_EQ(window().render()[1], GetParam().second);
    // Only the first opening follows the argument.
    window().selectPane("General");
    window().close();
    openFromMenu();
    EXPECT_EQ(window().render()[1], "▸ General   Menu Bar Items   Permissions");
}

const std::string kGeneral = "▸ General   Menu Bar Items   Permissions";
INSTANTIATE_TEST_SUITE_P(
    TabArguments, OpenedAtLaunch,
    ::testing::Values(std::pair{std::vector<std::string>{}, kGeneral},
                      std::pair{std::vector<std::string>{"--tab=items"},
                                std::string("General   ▸ Menu Bar Items   Permissions")},
                      std::pair{std::vector<std::string>{"--tab=permissions", "--tab=items"},
                                std::string("General   Menu Bar Items   ▸ Permissions")},
                      std::pair{std::vector<std::string>{"--tab=ITEMS"}, kGeneral},
                      std::pair{std::vector<std::string>{"--tab=Permissions"}, kGeneral},
                      std::pair{std::vector<std::string>{"--tab=advanced"}, kGeneral},
                      std::pair{std::vector<std::string>{"--tab="}, kGeneral},
                      std::pair{std::vector<std::string>{"--tab=general", "--tab=permissions"},
                                kGeneral}));

} // namespace
} // namespace quillet::test
