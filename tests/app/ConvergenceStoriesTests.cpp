// Stories of a user for whom Quillet once left items in the wrong zone, each under every way the
// menu bar may drop a dragged item: the first arrangement with a trigger in its middle, items
// that appear later, a user holding the button, and a bar that cannot be fixed.

#include "app/BarStory.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet::apptests {
namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;

const BarStory::Application kAlpha{"com.a.alpha", "Alpha", 701};
const BarStory::Application kBeta{"com.b.beta", "Beta", 702};
const BarStory::Application kGamma{"com.c.gamma", "Gamma", 703};
const BarStory::Application kDelta{"com.d.delta", "Delta", 704};
const BarStory::Application kWeather{"com.example.weather", "Weather", 706};

class ConvergenceStory : public ::testing::TestWithParam<sim::DropModel> {
protected:
    // Four applications (one untitled), the clock and Control Center; rules hide two of them.
    BarStory& start(Permissions permissions = {}) {
        story_.emplace(sim::MenuBarNaming::macOS26, GetParam(), permissions);
        story().addRunning(kAlpha, {{"Item-0", 24}});
        story().addRunning(kBeta, {{kBeta.bundleID, 26}});
        story().addRunning(kGamma, {{kGamma.bundleID, 30}});
        story().addRunning(kDelta, {{kDelta.bundleID, 22}});
        story().preferences().setSectionByBundleID({{kBeta.bundleID, MenuBarSection::alwaysHidden},
                                                    {kGamma.bundleID, MenuBarSection::hidden},
                                                    {kWeather.bundleID, MenuBarSection::dynamic}});
        return story();
    }
    BarStory& story() { return *story_; }

    void expectEveryItemInItsZone() {
        EXPECT_THAT(story().zoneProblems(), IsEmpty()) << story().mac().renderMenuBar();
        EXPECT_THAT(story().visibilityProblems(), IsEmpty()) << story().mac().renderMenuBar();
    }

private:
    std::optional<BarStory> story_;
};

// The first arrangement starts 1 s after launch and drags for a few seconds; a hot key press or
// a pointer passing over the menu bar then used to collapse the bar under the drags.
TEST_P(ConvergenceStory, ATriggerDuringTheFirstArrangementWaitsForIt) {
    for (Duration press : {1000ms, 1200ms, 1400ms, 1600ms, 2500ms}) {
        SCOPED_TRACE(std::to_string(press / 1ms) + " ms");
        BarStory& bar = start();
        bar.launchQuillet();
        bar.pressHotKeyAt(press);
        bar.hoverAt(press - 700ms, 400ms);
        bar.settle();
        expectEveryItemInItsZone();
        // The press came while everything was revealed for the arrangement: it hides.
        EXPECT_FALSE(bar.isExpanded());

        // Later presses show and hide the hidden zone as ever.
        bar.pressHotKeyAt(bar.scheduler().now());
        bar.settle();
        EXPECT_TRUE(bar.isExpanded());
        expectEveryItemInItsZone();
        bar.pressHotKeyAt(bar.scheduler().now());
        bar.settle();
        EXPECT_FALSE(bar.isExpanded());
        expectEveryItemInItsZone();
    }
}

// Also without Screen Recording, where no item window has a title and each application's first
// item is known by what it reports through Accessibility.
TEST_P(ConvergenceStory, ItemsThatAppearLaterGetTheZoneOfTheirRule) {
    for (const bool screenRecording : {true, false}) {
        SCOPED_TRACE(screenRecording ? "with Screen Recording" : "without Screen Recording");
        BarStory& bar = start({.accessibility = true, .screenRecording = screenRecording});
        bar.launchQuillet();
        bar.settle();
        // Gamma quits and relaunches, a Hide app, a two-item Always app and a second copy of it
        // launch, an Auto app launches and comes to the front.
        bar.quitAt(bar.scheduler().now(), kGamma.bundleID);
        bar.launchAt(bar.scheduler().now() + 300ms, {kGamma.bundleID, kGamma.name, 803},
                     {{kGamma.bundleID, 30}});
        bar.preferences().setSectionByBundleID({{kBeta.bundleID, MenuBarSection::alwaysHidden},
                                                {kGamma.bundleID, MenuBarSection::hidden},
                                                {kWeather.bundleID, MenuBarSection::dynamic},
                                                {"com.n.hid", MenuBarSection::hidden},
                                                {"com.two.items", MenuBarSection::alwaysHidden}});
        bar.launchAt(bar.scheduler().now() + 1s, {"com.n.hid", "NHid", 950}, {{"com.n.hid", 24}});
        bar.launchAt(bar.scheduler().now() + 2s, {"com.two.items", "Two", 951},
                     {{"com.two.items", 24}, {"com.two.items", 30}});
        bar.launchAt(bar.scheduler().now() + 2500ms, {"com.two.items", "Two", 952},
                     {{"com.two.items", 26}});
        bar.launchAt(bar.scheduler().now() + 3s, kWeather, {{kWeather.bundleID, 28}});
        bar.activateAt(bar.scheduler().now() + 3500ms, kWeather.bundleID);
        bar.settle();
        expectEveryItemInItsZone();

        // The Auto app leaves the front: its item waits in the hidden zone again.
        bar.activateAt(bar.scheduler().now(), "com.apple.finder");
        bar.settle();
        expectEveryItemInItsZone();
    }
}

TEST_P(ConvergenceStory, AnAutoAppInFrontAtLaunchOrAtAProfileSwitchEndsShown) {
    BarStory& bar = start();
    bar.addRunning(kWeather, {{kWeather.bundleID, 28}, {kWeather.bundleID, 24}});
    bar.mac().setFrontmostBundleID(kWeather.bundleID);
    bar.launchQuillet();
    bar.settle();
    expectEveryItemInItsZone();

    bar.preferences().setProfiles(
        {{"Plain", {}}, {"Travel", {{kWeather.bundleID, MenuBarSection::dynamic}}}});
    bar.switchProfileAt(bar.scheduler().now(), "Plain");
    bar.settle();
    bar.switchProfileAt(bar.scheduler().now(), "Travel");
    bar.settle();
    expectEveryItemInItsZone();
    bar.activateAt(bar.scheduler().now(), "com.apple.finder");
    bar.settle();
    expectEveryItemInItsZone();
}

// Without a single rule, an item that no rule can name stays in view, before and after the hot
// key hides the (empty) hidden zone.
TEST_P(ConvergenceStory, AnUntitledItemIsNeverLostBehindTheSeparator) {
    BarStory& bar = start();
    bar.preferences().setSectionByBundleID({});
    bar.launchQuillet();
    bar.settle();
    expectEveryItemInItsZone();
    bar.pressHotKeyAt(bar.scheduler().now());
    bar.settle();
    EXPECT_FALSE(bar.isExpanded());
    expectEveryItemInItsZone();
}

// A user holding the button stops every drag, and applications quit in the middle of the
// arrangement: what is left misplaced is repaired once the button is up.
TEST_P(ConvergenceStory, AHeldButtonOrQuittingAppsMidArrangementAreRepairedLater) {
    BarStory& bar = start();
    bar.launchQuillet();
    bar.holdButtonAt(1300ms, 6s);
    bar.quitAt(1500ms, kDelta.bundleID);
    bar.quitAt(1900ms, kAlpha.bundleID);
    bar.settle();
    expectEveryItemInItsZone();
    EXPECT_EQ(bar.scheduler().pendingJobs(), 0u);
}

// A button that never comes up (a stuck mouse, a user who holds it for good) stops every drag:
// the engine waits and tries again a bounded number of times, says so once, and stops.
TEST_P(ConvergenceStory, ABarThatCannotBeFixedCostsBoundedDragsAndOneLogLine) {
    BarStory& bar = start();
    bar.launchQuillet();
    bar.holdButtonAt(1100ms, 24h);
    bar.scheduler().advance(1h);
    // The button went down before the first drag: none is ever posted under the user's hand.
    const std::size_t drags = bar.drags();
    EXPECT_EQ(drags, 0u);
    const auto& log = bar.logLines();
    EXPECT_EQ(std::count_if(log.begin(), log.end(),
                            [](const std::string& line) {
                                return line.find("could not be put into their zones") !=
                                       std::string::npos;
                            }),
              1);
    // Nothing more happens, however long the bar is left alone.
    EXPECT_EQ(bar.scheduler().pendingJobs(), 1u); // only the button's own release
    bar.scheduler().advance(1h);
    EXPECT_EQ(bar.drags(), drags);
}

INSTANTIATE_TEST_SUITE_P(EveryDropModel, ConvergenceStory, ::testing::ValuesIn(kEveryDropModel));

} // namespace
} // namespace quillet::apptests
