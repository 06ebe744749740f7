// Stories of a Mac that withholds something: titles without Screen Recording, posted events
// without Accessibility, answers from a hung application, and rules that name Quillet itself.

#include "core/app/BundleIdentity.hpp"
#include "engine/EngineScene.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace quillet::enginetests {
namespace {

using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class ArrangingWithoutPermissionsTest : public EngineScene {
protected:
    void populateAndStart() {
        dropbox = mac.addApplicationItem(kDropbox, kDropbox.bundleID, 30);
        docker = mac.addApplicationItem(kDocker, kDocker.bundleID, 28);
        slack = mac.addApplicationItem(kSlack, "Item-0", 26);
        startQuillet();
    }
    // Dropbox hidden and Docker always hidden; Slack has no rule, and no name on macOS 26.
    void arrange() {
        setRules({{kDropbox.bundleID, MenuBarSection::hidden},
                  {kDocker.bundleID, MenuBarSection::alwaysHidden}});
        manager->arrangeAndReapply({kDropbox.bundleID}, {kDocker.bundleID});
        scheduler.runUntilIdle();
    }
    void expectArranged() const {
        EXPECT_EQ(zoneOf(docker), MenuBarSection::alwaysHidden);
        EXPECT_EQ(zoneOf(dropbox), MenuBarSection::hidden);
        EXPECT_EQ(zoneOf(controlWindow(ControlItemManager::kToggleName)), MenuBarSection::visible);
        EXPECT_TRUE(isOnScreen(controlWindow(ControlItemManager::kToggleName)));
    }
    std::vector<std::string> linesAbout(const char* topic) const {
        std::vector<std::string> found;
        std::copy_if(log.lines().begin(), log.lines().end(), std::back_inserter(found),
                     [&](const std::string& line) { return line.find(topic) != line.npos; });
        return found;
    }

    WindowID dropbox = 0;
    WindowID docker = 0;
    WindowID slack = 0;
};

class ArrangingWithoutScreenRecordingTest
    : public ArrangingWithoutPermissionsTest,
      public ::testing::WithParamInterface<sim::MenuBarNaming> {};

TEST_P(ArrangingWithoutScreenRecordingTest, OurItemsAreFoundByTheirFrames) {
    mac.setNaming(GetParam());
    mac.setScreenRecordingAllowed(false);
    populateAndStart();
    // Only our own windows, and only while we own them, keep a title.
    std::size_t titled = 0;
    for (const auto& item : ItemEnumerator(mac, mac, mac).rawItems(kOwnPID)) {
        titled += item.windowName.has_value();
    }
    EXPECT_EQ(titled, GetParam() == sim::MenuBarNaming::macOS26 ? 0u : 3u);

    arrange();
    expectArranged();
    EXPECT_THAT(linesAbout("not all control items"), SizeIs(0));
}

INSTANTIATE_TEST_SUITE_P(Namings, ArrangingWithoutScreenRecordingTest,
                         ::testing::Values(sim::MenuBarNaming::macOS26,
                                           sim::MenuBarNaming::perApplication));

TEST_F(ArrangingWithoutPermissionsTest, WithoutAccessibilityNothingMovesUntilTheGrantAppears) {
    mac.setAccessibilityTrusted(false);
    populateAndStart();
    arrange();
    manager->enforce(kSlack.bundleID, slack, MenuBarSection::hidden);
    scheduler.runUntilIdle();
    mac.activateApplication(kDocker.bundleID); // looks again: still missing
    scheduler.runUntilIdle();

    EXPECT_EQ(mac.input().cursorHides(), 0);
    EXPECT_EQ(drags(), 0u);
    const auto told = linesAbout("Accessibility");
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_THAT(told[0], StartsWith("Quillet: "));
    EXPECT_THAT(log.lines(), Each(Not(HasSubstr("did not land"))));
    // The borders could not be put in order, so nothing is hidden behind them, the toggle least.
    for (WindowID window : mac.menuBarOrder()) {
        EXPECT_TRUE(isOnScreen(window));
    }

    mac.setAccessibilityTrusted(true);
    scheduler.runUntilIdle();
    EXPECT_EQ(drags(), 0u) << "nothing announces a grant, and nothing polls for one";
    mac.activateApplication(kDropbox.bundleID);
    scheduler.runUntilIdle();
    expectArranged();
    EXPECT_EQ(mac.input().cursorHides(), mac.input().cursorShows());
    EXPECT_THAT(linesAbout("Accessibility"), SizeIs(1));

    // Granted, the watch is gone: an application switch costs nothing.
    const auto dragsSoFar = drags();
    mac.activateApplication(kDocker.bundleID);
    scheduler.runUntilIdle();
    EXPECT_EQ(drags(), dragsSoFar);
}

TEST_F(ArrangingWithoutPermissionsTest, RulesNamingOurOwnItemsAreIgnored) {
    populateAndStart();
    manager->arrangeAndReapply({}, {}); // puts the control items in order
    scheduler.runUntilIdle();
    const auto toggleDrags = drags(controlWindow(ControlItemManager::kToggleName));
    const auto separatorDrags = drags(controlWindow(ControlItemManager::kSeparatorName));

    const SectionRules own{{"sys:quillet.toggle", MenuBarSection::hidden},
                           {"sys:quillet.separator", MenuBarSection::alwaysHidden},
                           {std::string(kBundleIdentifier), MenuBarSection::alwaysHidden}};
    setRules(own);
    manager->arrangeAndReapply({"sys:quillet.toggle"},
                               {"sys:quillet.separator", std::string(kBundleIdentifier)});
    scheduler.runUntilIdle();
    manager->enforce("sys:quillet.toggle", 0, MenuBarSection::alwaysHidden);
    scheduler.runUntilIdle();

    EXPECT_EQ(drags(controlWindow(ControlItemManager::kToggleName)), toggleDrags);
    EXPECT_EQ(drags(controlWindow(ControlItemManager::kSeparatorName)), separatorDrags);
    EXPECT_EQ(zoneOf(controlWindow(ControlItemManager::kToggleName)), MenuBarSection::visible);
    EXPECT_THAT(linesAbout("own item"), SizeIs(4));
}

TEST_F(ArrangingWithoutPermissionsTest, AHungApplicationDelaysAnArrangementOnlyBriefly) {
    populateAndStart();
    mac.setApplicationHung(kDropbox.pid, true);
    arrange();
    // Asked, Dropbox never answered; found by its window instead, it still lands.
    EXPECT_GT(mac.accessibilityWaited(), 0ns);
    EXPECT_LT(mac.accessibilityWaited(), 1s);
    expectArranged();
}

} // namespace
} // namespace quillet::enginetests
