#include "core/engine/ControlItemManager.hpp"
#include "core/nav/KeyboardNavController.hpp"
#include "core/nav/NavHUD.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/app/Scenario.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/nav/SelfTestLaunch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using Nav = KeyboardNavController;
using sim::SimulatedMac;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};
const SimulatedMac::Application kDocker{"com.docker.docker", "Docker", 704};

// Quillet launched and arranged on a macOS 26 bar, left to right: Dropbox (ruled Hide), our
// control items, Slack, Docker, then Control Center and the clock.
class KeyboardNavigation : public ::testing::Test {
protected:
    KeyboardNavigation() {
        docker = mac().addApplicationItem(kDocker, kDocker.bundleID, 26);
        dropbox = mac().addApplicationItem(kDropbox, kDropbox.bundleID, 28);
        slack = mac().addApplicationItem(kSlack, kSlack.bundleID, 24);
        quillet.services.preferences().setSectionByBundleID(
            {{kDropbox.bundleID, MenuBarSection::hidden}});
        for (const auto* app : {&kDocker, &kDropbox, &kSlack}) {
            mac().installApplication(app->bundleID, "/Applications/" + app->name + ".app");
        }
        quillet.delegate.applicationDidFinishLaunching();
        scheduler().runUntilIdle();
    }

    SimulatedMac& mac() { return quillet.world.mac; }
    sim::VirtualScheduler& scheduler() { return quillet.world.scheduler; }
    sim::SimulatedKeyboard& keyboard() { return mac().keyboard(); }
    Nav& nav() { return quillet.services.keyboardNav(); }
    bool zoneOpen() { return quillet.delegate.controlManager->isExpanded(); }
    std::vector<std::string> panelLines() {
        const auto* panel = quillet.world.panels.keyPanel();
        return panel ? panel->render() : std::vector<std::string>{};
    }
    void chooseKeyboardNavigation() {
        auto toggle = mac().ownStatusItem("quillet.toggle");
        toggle->click(ButtonEvent{4, 0}); // right-click: the menu
        toggle->chooseMenuEntry("Keyboard Navigation");
    }
    void press(std::uint16_t key) {
        keyboard().type(key);
        scheduler().runDue();
    }
    // Nothing of navigation is left: no monitor, no panel on screen, the hidden zone closed.
    void expectLeftCleanly() {
        EXPECT_EQ(keyboard().monitorCount(), 0u);
        EXPECT_THAT(quillet.world.panels.visiblePanels(), IsEmpty());
        EXPECT_FALSE(nav().state());
        EXPECT_FALSE(zoneOpen());
    }
    static std::string hint(const std::string& position) {
        return std::string(NavHUD::kKeysHint) + position;
    }

    sim::SimulatedQuillet quillet;
    WindowID slack = 0, dropbox = 0, docker = 0;
};

TEST_F(KeyboardNavigation, WalksTheItemsLeftToRightAndOpensTheFocusedOneWithReturn) {
    ASSERT_FALSE(zoneOpen());
    chooseKeyboardNavigation();
    EXPECT_TRUE(zoneOpen());
    scheduler().advance(249ms);
    EXPECT_EQ(keyboard().monitorCount(), 0u);
    scheduler().advance(1ms);

    // Dropbox (revealed), Slack, Docker, Control Center, the clock; our own items are skipped.
    EXPECT_THAT(panelLines(), ElementsAre("Dropbox", hint("1 / 5")));
    const auto* panel = quillet.world.panels.keyPanel();
    EXPECT_EQ(panel->origin, (Point{1512.0 / 2 - 150, 982 - 110}));
    EXPECT_TRUE(quillet.world.application.isActive());

    press(Nav::kLeftArrowKey); // at the left end: consumed, no move
    press(Nav::kRightArrowKey);
    EXPECT_THAT(panelLines(), ElementsAre("Slack", hint("2 / 5")));
    press(Nav::kRightArrowKey);
    press(126); // up arrow: not navigation's
    EXPECT_EQ(nav().positionLabel(), "3 / 5");
    EXPECT_EQ(keyboard().passedOn(), (std::vector<KeyEvent>{{126, true}}));

    const Rect dockerFrame = *mac().statusItemFrame(docker);
    press(Nav::kReturnKey);
    EXPECT_THAT(mac().openedItems(), ElementsAre(docker));
    EXPECT_EQ(mac().input().warps().back(), dockerFrame.center());
    expectLeftCleanly();
}

// Without the grant every item window of macOS 26 is Control Center's and untitled, ours too:
// our separators and toggle are still left out, the applications name their own items, and
// Return opens what the panel counted.
TEST_F(KeyboardNavigation, WithoutScreenRecordingOurOwnItemsAreLeftOutAndTheOthersNamed) {
    mac().setScreenRecordingAllowed(false);
    nav().enter();
    scheduler().advance(Nav::kSetUpDelay);
    EXPECT_THAT(panelLines(), ElementsAre("Dropbox", hint("1 / 5")));
    press(Nav::kRightArrowKey);
    press(Nav::kRightArrowKey);
    press(Nav::kReturnKey);
    EXPECT_THAT(mac().openedItems(), ElementsAre(docker));
    expectLeftCleanly();
}

TEST_F(KeyboardNavigation, EscapeAndAnEarlyExitLeaveNothingBehind) {
    nav().enter();
    scheduler().advance(250ms);
    press(Nav::kEscapeKey);
    expectLeftCleanly();
    EXPECT_THAT(mac().openedItems(), IsEmpty());

    // An exit() during the quarter second before set-up cancels it.
    nav().enter();
    scheduler().advance(100ms);
    nav().exit();
    scheduler().advance(1s);
    expectLeftCleanly();
    EXPECT_EQ(quillet.world.panels.createdCount(), 1u);
    EXPECT_EQ(nav().positionLabel(), "");
}

TEST_F(KeyboardNavigation, AnItemThatVanishedIsClickedWhereTheListSawIt) {
    nav().enter();
    scheduler().advance(250ms);
    const Point whereDropboxWas = mac().statusItemFrame(dropbox)->center();
    mac().quitApplication(kDropbox.pid);
    press(Nav::kKeypadEnterKey);
    EXPECT_EQ(mac().input().warps().back(), whereDropboxWas);
    EXPECT_THAT(mac().openedItems(), ::testing::Not(::testing::Contains(dropbox)));
    expectLeftCleanly();
}

TEST_F(KeyboardNavigation, WithoutItemsOnTheMainDisplayNothingStartsAndTheZoneStaysOpen) {
    mac().setDisplays({makeRect(0, 0, 0, 0), makeRect(0, 0, 1512, 982)});
    nav().enter();
    scheduler().advance(1s);
    EXPECT_FALSE(nav().state());
    EXPECT_EQ(quillet.world.panels.createdCount(), 0u);
    EXPECT_EQ(keyboard().monitorCount(), 0u);
    EXPECT_TRUE(zoneOpen());
    // A panel shown regardless stays at the origin when there is no main screen.
    mac().setDisplays({});
    nav().showPanel();
    EXPECT_EQ(quillet.world.panels.keyPanel()->origin, (Point{0, 0}));
    EXPECT_THAT(panelLines(), ElementsAre("—", hint("")));
}

TEST_F(KeyboardNavigation, EnteringAgainWhileActiveLeavesTheFirstMonitorInstalled) {
    nav().enter();
    scheduler().advance(250ms);
    press(Nav::kRightArrowKey);
    nav().enter();
    scheduler().advance(250ms);
    EXPECT_EQ(keyboard().monitorCount(), 2u);
    EXPECT_EQ(nav().positionLabel(), "1 / 5"); // started over
    press(Nav::kRightArrowKey);                // handled once, by the first monitor
    EXPECT_EQ(nav().positionLabel(), "2 / 5");
    nav().exit();
    EXPECT_EQ(keyboard().monitorCount(), 1u);
    EXPECT_EQ(quillet.world.panels.visiblePanels().size(), 1u); // the first panel, let go of
}

// Any sequence of keys keeps the focus on an item: arrows move it by one without wrapping and are
// always consumed, every other key but Return, Enter and Escape passes on.
TEST_F(KeyboardNavigation, RandomKeysNeverMoveTheFocusOffTheList) {
    const std::uint16_t keys[] = {Nav::kLeftArrowKey, Nav::kRightArrowKey, 125, 126, 0, 49};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        nav().enter();
        scheduler().advance(250ms);
        std::int64_t expected = 0;
        for (int step = 0; step < 40; ++step) {
            const std::uint16_t key = keys[random() % std::size(keys)];
            const bool arrow = key == Nav::kLeftArrowKey || key == Nav::kRightArrowKey;
            if (arrow) {
                expected = std::clamp<std::int64_t>(
                    expected + (key == Nav::kRightArrowKey ? 1 : -1), 0, 4);
            }
            EXPECT_EQ(nav().handle({key, true}), arrow) << "seed " << seed;
            ASSERT_EQ(nav().state()->index, expected) << "seed " << seed;
        }
        nav().exit();
    }
}

sim::Scenario barWith(std::vector<std::string> bundleIDs) {
    sim::Scenario scenario;
    Pid pid = 800;
    for (const auto& id : bundleIDs) {
        scenario.apps.push_back({{id, id, ++pid}, 24, id});
    }
    return scenario;
}

TEST(NavigationSelfTest, PrintsItsVerdictAndQuits) {
    // Also on the hosted bar of macOS 27, whose items have no windows.
    for (const int macOS : {26, 27}) {
        auto bar = barWith({"com.example.a"});
        bar.macOS = macOS;
        auto passed = sim::launchWithNavigationSelfTest(bar);
        EXPECT_TRUE(passed.quit);
        EXPECT_EQ(passed.standardOutput, "NAV-SELFTEST: index 0→1→2→1  PASSED — local monitor "
                                         "caught arrows, focus moved\n")
            << "macOS " << macOS;
    }

    // Control Center and the clock alone are two items.
    auto tooFew = sim::launchWithNavigationSelfTest(barWith({}));
    EXPECT_TRUE(tooFew.quit);
    EXPECT_EQ(tooFew.standardOutput, "NAV-SELFTEST: FAILED — setup (active=true, items=2)\n");
}

// The self-test on a Mac that turns down the activation: the keys never reach the monitor.
TEST(NavigationSelfTest, FailsWhenTheActivationIsRefusedAndLeavesNothingBehind) {
    sim::SimulatedQuillet quillet({"Quillet", "--nav-selftest"});
    quillet.world.application.refuseActivation(true);
    quillet.world.mac.addApplicationItem(kDocker, kDocker.bundleID, 26);
    quillet.delegate.applicationDidFinishLaunching();
    quillet.world.scheduler.advance(4s);
    EXPECT_TRUE(quillet.world.application.isTerminated());
    EXPECT_EQ(quillet.world.process.standardOutput(),
              "NAV-SELFTEST: index 0→0→0→0  FAILED — monitor did not move focus (key capture "
              "broken)\n");
    EXPECT_EQ(quillet.world.mac.keyboard().monitorCount(), 0u);
    EXPECT_FALSE(quillet.delegate.controlManager->isExpanded());
}

// The user leaves navigation while the self-test walks: the readings after that have no focus.
TEST(NavigationSelfTest, ReadsNoFocusOnceNavigationHasEnded) {
    sim::SimulatedQuillet quillet({"Quillet", "--nav-selftest"});
    quillet.world.mac.addApplicationItem(kDocker, kDocker.bundleID, 26);
    quillet.delegate.applicationDidFinishLaunching();
    Nav& nav = quillet.services.keyboardNav();
    // Until the self-test's first arrow has moved the focus, before it reads the focus.
    while (nav.positionLabel() != "2 / 3" && quillet.world.scheduler.now() < 10s) {
        quillet.world.scheduler.advance(10ms);
    }
    quillet.world.mac.keyboard().type(Nav::kEscapeKey);
    quillet.world.scheduler.advance(1s);
    EXPECT_EQ(quillet.world.process.standardOutput(),
              "NAV-SELFTEST: index 0→-1→-1→-1  FAILED — monitor did not move focus (key capture "
              "broken)\n");
    EXPECT_TRUE(quillet.world.application.isTerminated());
}

// The story quillet-sim tells with the example scenario: the panel follows the arrows, Escape and
// Return close the zone, and Return opens the focused item.
TEST(NavigationScenario, PrintsThePanelAfterEveryKeyAndTheItemOpened) {
    std::ifstream file(std::string(QUILLET_FIXTURES_DIR) + "/scenarios/keyboard-navigation.json");
    std::stringstream text;
    text << file.rdbuf();
    auto parsed = sim::parseScenario(text.str());
    ASSERT_TRUE(parsed.value) << parsed.error;
    std::vector<std::string> panels;
    sim::ScenarioPlayer(std::move(*parsed.value)).play([&](const std::string& line) {
        if (line.find("panel: ") != std::string::npos && line.find("/ 7") == std::string::npos) {
            panels.push_back(line.substr(line.find(':') + 2));
        } else if (line.find("opened: ") != std::string::npos) {
            panels.push_back(line.substr(4));
        }
    });
    EXPECT_THAT(panels, ElementsAre("Docker", "Dropbox", "Spotify", "Dropbox", "Docker", "Dropbox",
                                    "opened: Dropbox"));
}

} // namespace
} // namespace quillet
