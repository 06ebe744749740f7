#include "engine/EngineScene.hpp"

#include <gtest/gtest.h>

namespace quillet::enginetests {
namespace {

using sim::SimulatedMac;
using Resolved = ControlItemManager::Resolved;

// Windows placed by hand away from the menu bar's own items, which sit at the right end.
class ItemResolutionTest : public EngineScene {
protected:
    ItemResolutionTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1920, 1080)});
        startQuillet();
    }

    void addWindow(WindowID id, Rect frame, std::optional<std::string> title = std::nullopt,
                   std::string owner = "Some App") {
        mac.addWindow(SimulatedMac::statusItemWindow(id, frame, 900, std::move(owner), title));
    }
    // An application that reports where its first status item is.
    void reportFrame(const std::string& bundleID, Pid pid, Rect frame) {
        mac.setAccessibilityTrusted(true);
        mac.setRunningProcesses(bundleID, {pid});
        mac.setExtrasMenuBarChildFrame(pid, frame);
    }
};

TEST_F(ItemResolutionTest, AReportedFrameFindsTheNearbyWindowOfTheMostSimilarWidth) {
    reportFrame("com.example.app", 901, makeRect(1000, 0, 30, 24)); // centre 1015
    addWindow(1, makeRect(1003, 0, 20, 24));                        // centre 2 away, 10 narrower
    addWindow(2, makeRect(990, 0, 32, 24));  // centre 9 away, 2 wider: the one
    addWindow(3, makeRect(1016, 0, 30, 24)); // exact width, but centre 16 away
    EXPECT_EQ(manager->resolve("com.example.app", 0), (Resolved{2, 0}));

    // Equal width differences: the nearer centre.
    reportFrame("com.example.other", 902, makeRect(600, 0, 30, 24)); // centre 615
    addWindow(4, makeRect(614, 0, 32, 24));                          // centre 15 away
    addWindow(5, makeRect(588, 0, 28, 24));                          // centre 13 away
    EXPECT_EQ(manager->resolve("com.example.other", 0), (Resolved{5, 0}));

    // A frame on no display is no help; the fallback window is.
    reportFrame("com.example.lost", 903, makeRect(-500, 0, 30, 24));
    EXPECT_EQ(manager->resolve("com.example.lost", 4), (Resolved{4, 0}));
}

TEST_F(ItemResolutionTest, KeyMatchesPreferTheDisplayUnderThePointer) {
    addWindow(11, makeRect(500, 0, 30, 24), "com.example.app");
    addWindow(12, makeRect(2000, 0, 30, 24), "com.example.app");
    addWindow(13, makeRect(400, 0, 30, 24), "Battery", "Control Center");
    // AppKit's pointer counts upward from the bottom of the 982-point main screen.
    mac.setPointerLocation({2000, 500});
    EXPECT_EQ(manager->resolve("com.example.app", 0), (Resolved{12, 1}));
    mac.setPointerLocation({100, 900});
    EXPECT_EQ(manager->resolve("com.example.app", 0), (Resolved{11, 0}));
    mac.setPointerLocation({-100, 500});
    EXPECT_EQ(manager->resolve("com.example.app", 0), (Resolved{11, 0}));
    EXPECT_EQ(manager->resolve("sys:Battery", 0), (Resolved{13, 0}));
}

TEST_F(ItemResolutionTest, TheFallbackWindowCountsOnlyWhenItIsRealAndOnADisplay) {
    addWindow(12, makeRect(2000, 0, 30, 24), "com.example.app");
    addWindow(14, makeRect(-200, 0, 30, 24));
    EXPECT_EQ(manager->resolve("com.example.unknown", 12), (Resolved{12, 1}));
    EXPECT_EQ(manager->resolve(std::nullopt, 12), (Resolved{12, 1}));
    EXPECT_EQ(manager->resolve(std::nullopt, 14), std::nullopt);
    EXPECT_EQ(manager->resolve(std::nullopt, 99), std::nullopt);
    EXPECT_EQ(manager->resolve(std::nullopt, 0), std::nullopt);
}

TEST_F(ItemResolutionTest, ControlItemsAreFoundPerDisplay) {
    addWindow(15, makeRect(3000, 0, 22, 24), "quillet.separator", "Control Center");
    EXPECT_EQ(manager->controlWID(ControlItemManager::kSeparatorName, 0),
              controlWindow(ControlItemManager::kSeparatorName));
    EXPECT_EQ(manager->controlWID(ControlItemManager::kSeparatorName, 1), 15u);
    EXPECT_EQ(manager->controlWID(ControlItemManager::kToggleName, 1), std::nullopt);
}

TEST_F(ItemResolutionTest, ThePointersDisplayIsFoundInWindowServerCoordinates) {
    const auto displays = ItemEnumerator(mac, mac, mac).activeDisplayBounds();
    mac.setPointerLocation({2000, 500});
    EXPECT_EQ(manager->cursorDisplayIndex(displays), 1u);
    mac.setPointerLocation({100, 900});
    EXPECT_EQ(manager->cursorDisplayIndex(displays), 0u);
    mac.setPointerLocation({100, 990}); // above the main display
    EXPECT_EQ(manager->cursorDisplayIndex(displays), std::nullopt);
    mac.setDisplays({});
    mac.setPointerLocation({100, 900});
    EXPECT_EQ(manager->cursorDisplayIndex(displays), std::nullopt);
}

} // namespace
} // namespace quillet::enginetests
