#include "core/menubar/AXResolver.hpp"
#include "core/menubar/WindowValueReading.hpp"
#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimulatedMac;
using ::testing::ElementsAre;

const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};

class ApplicationsInTheBarTest : public ::testing::Test {
protected:
    ApplicationsInTheBarTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.addControlCenterAndClock(); // 1392..1512
        mac.addObserver(WorkspaceEvent::didLaunchApplication, [&] { notes.push_back("launch"); });
        mac.addObserver(WorkspaceEvent::didActivateApplication,
                        [&] { notes.push_back("activate " + *mac.frontmostBundleID()); });
    }

    // The frame a window description gives, as the item mover reads it.
    std::optional<Rect> described(WindowID window) {
        std::optional<Rect> frame;
        mac.visitWindowDescription(window, [&](const WindowRecord& record) {
            frame = readRect(record.value(WindowKey::bounds));
        });
        return frame;
    }

    SimulatedMac mac;
    std::vector<std::string> notes;
};

TEST_F(ApplicationsInTheBarTest, ALaunchAddsItsItemsAtTheLeftEndAndTellsObservers) {
    mac.addApplicationItem(kDropbox, "Item-0", 30);
    auto windows = mac.launchApplication(kSlack, {{"Item-0", 26}, {"Item-1", 20}});

    EXPECT_EQ(mac.renderMenuBar(), "[Slack] [Slack] [Dropbox] | [BentoBox] [Clock]");
    EXPECT_EQ(mac.statusItemFrame(windows[0])->minX(), 1336);
    EXPECT_EQ(mac.statusItemFrame(windows[1])->minX(), 1316);
    EXPECT_THAT(notes, ElementsAre("launch"));
    EXPECT_THAT(mac.runningProcesses(kSlack.bundleID), ElementsAre(702));

    mac.activateApplication(kSlack.bundleID);
    EXPECT_THAT(notes, ElementsAre("launch", "activate com.tinyspeck.slackmacgap"));

    mac.quitApplication(702);
    EXPECT_EQ(mac.renderMenuBar(), "[Dropbox] | [BentoBox] [Clock]");
    EXPECT_FALSE(mac.statusItemFrame(windows[0]));
    EXPECT_TRUE(mac.runningProcesses(kSlack.bundleID).empty());
    EXPECT_TRUE(mac.visitWindowDescription(windows[0], [](const WindowRecord&) { FAIL(); }));
}

TEST_F(ApplicationsInTheBarTest, AccessibilityFindsTheAppsFirstItemInTheLiveBar) {
    mac.launchApplication(kSlack, {{"Item-0", 26}, {"Item-1", 20}});
    auto dropbox = mac.addApplicationItem(kDropbox, "Item-0", 30);
    AXResolver ax(mac, mac);
    mac.setAccessibilityTrusted(false);
    EXPECT_EQ(ax.menuBarItemFrame(kSlack.bundleID), std::nullopt);

    mac.setAccessibilityTrusted(true);
    EXPECT_EQ(ax.menuBarItemFrame(kSlack.bundleID), makeRect(1366, 0, 26, 24));
    mac.removeStatusItemWindow(dropbox);
    auto separator = mac.createStatusItem(10000);
    EXPECT_EQ(ax.menuBarItemFrame(kSlack.bundleID), makeRect(1366, 0, 26, 24));
    EXPECT_EQ(ax.firstExtraFrame(4242), makeRect(-8654, 0, 10000, 24));

    // A frame the test sets wins.
    mac.setExtrasMenuBarChildFrame(702, makeRect(5, 0, 1, 24));
    EXPECT_EQ(ax.menuBarItemFrame(kSlack.bundleID), makeRect(5, 0, 1, 24));
}

TEST_F(ApplicationsInTheBarTest, LaggingFramesReportThePreviousFrameOnceAfterAMove) {
    auto own = mac.createStatusItem(30);                           // 1362..1392
    auto dropbox = mac.addApplicationItem(kDropbox, "Item-0", 30); // 1332..1362
    auto slack = mac.addApplicationItem(kSlack, "Item-0", 26);     // 1306..1332
    mac.setFramesLag(true);
    EXPECT_EQ(described(slack), makeRect(1306, 0, 26, 24));

    mac.removeStatusItemWindow(dropbox);
    EXPECT_EQ(described(slack), makeRect(1306, 0, 26, 24));
    EXPECT_EQ(described(slack), makeRect(1336, 0, 26, 24));
    EXPECT_EQ(described(slack), makeRect(1336, 0, 26, 24));
    EXPECT_EQ(mac.statusItemFrame(slack), makeRect(1336, 0, 26, 24));

    mac.setFramesLag(false);
    own->setLength(40);
    EXPECT_EQ(described(slack), makeRect(1326, 0, 26, 24));
}

} // namespace
} // namespace quillet
