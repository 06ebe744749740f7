#include "core/menubar/BarKind.hpp"
#include "sim/Recording.hpp"
#include "sim/SimulatedMac.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace quillet {
namespace {

sim::Recording recording(const std::string& name) {
    std::ifstream file(std::string(QUILLET_FIXTURES_DIR) + "/" + name + ".json");
    std::stringstream text;
    text << file.rdbuf();
    auto parsed = sim::parseRecording(text.str());
    EXPECT_TRUE(parsed.value) << name << ": " << parsed.error;
    return std::move(*parsed.value);
}

bool hostRuns(const sim::SimulatedMac& mac) {
    return !mac.runningProcesses(std::string(kMenuBarHostBundleID)).empty();
}

// The kind a recording shows when the OS claims `version` and we made `ownItems` items.
BarKind kindOf(const sim::Recording& recorded, int version, std::size_t ownItems) {
    return detectBarKind(
        observeBar(recorded.mac, recorded.ownPID, version, hostRuns(recorded.mac), ownItems));
}

TEST(BarKind, RecordedMacOS26BarsHaveAWindowPerItemWhateverTheVersionSays) {
    const std::pair<const char*, std::size_t> recorded[] = {
        {"tahoe-single-display", 2}, {"sequoia-app-owned-items", 2}, {"two-displays", 1}};
    for (const auto& [name, ownItems] : recorded) {
        const auto bar = recording(name);
        EXPECT_FALSE(hostRuns(bar.mac)) << name;
        EXPECT_EQ(kindOf(bar, 26, ownItems), BarKind::perItemWindows) << name;
        EXPECT_EQ(kindOf(bar, 27, ownItems), BarKind::perItemWindows) << name;
    }
}

TEST(BarKind, TheRecordedHostedBarIsHostedWhenTheVersionOrTheHostConfirmsIt) {
    const auto bar = recording("hosted-single-display");
    EXPECT_EQ(bar.osMajorVersion, 27);
    ASSERT_TRUE(hostRuns(bar.mac));
    EXPECT_TRUE(observeBar(bar.mac, bar.ownPID, 27, true, 2).ownItemWindowFrames.empty());
    EXPECT_EQ(kindOf(bar, 27, 2), BarKind::hosted);
    EXPECT_EQ(kindOf(bar, 26, 2), BarKind::hosted);
    // The same list without the host or the version: nothing to go on.
    EXPECT_EQ(detectBarKind(observeBar(bar.mac, bar.ownPID, 26, false, 2)), BarKind::unknown);
}

TEST(BarKind, OwnWindowsSharingOnePlaceholderFrameMeanTheHostedBar) {
    const Rect placeholder = makeRect(0, 0, 30, 24);
    BarObservation shared{27, false, {placeholder, placeholder, placeholder}, 3};
    EXPECT_EQ(detectBarKind(shared), BarKind::hosted);
    // One window for three items is the placeholder too; for one item it is the item.
    EXPECT_EQ(detectBarKind({27, true, {placeholder}, 3}), BarKind::hosted);
    EXPECT_EQ(detectBarKind({27, true, {placeholder}, 1}), BarKind::perItemWindows);
    shared.osMajorVersion = 26;
    EXPECT_EQ(detectBarKind(shared), BarKind::unknown);
    // Some shared and some not is no bar anyone has described.
    EXPECT_EQ(detectBarKind({27, true, {placeholder, placeholder, makeRect(40, 0, 30, 24)}, 3}),
              BarKind::unknown);
}

TEST(BarKind, TheSimulatedMacShowsWhichBarItHostsToWhoeverLooks) {
    for (BarKind kind : {BarKind::perItemWindows, BarKind::hosted}) {
        sim::SimulatedMac mac;
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setMenuBarKind(kind);
        mac.addControlCenterAndClock();
        auto separator = mac.createStatusItem(-1);
        auto toggle = mac.createStatusItem(-1);
        separator->setAutosaveName("quillet.separator");
        toggle->setAutosaveName("quillet.toggle");
        const Pid own = mac.menuBar().ownPID();
        EXPECT_EQ(detectBarKind(observeBar(mac, own, 26, hostRuns(mac), 2)), kind);
        // Growing one of our items on the hosted bar only grows the frame they all report.
        separator->setLength(700);
        EXPECT_EQ(separator->windowFrame() == toggle->windowFrame(), kind == BarKind::hosted);
    }
}

} // namespace
} // namespace quillet
