#include "sim/SimulatedMac.hpp"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimulatedMac;
using ::testing::ElementsAre;

// Right to left: clock 1425, Control Center 1392, battery 1350..1392, Dropbox 1320..1350,
// Slack 1294..1320, our separator 1272..1294.
struct DragScene {
    DragScene() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.addControlCenterAndClock();
        battery = mac.addSystemItem("Battery", 42);
        dropbox = mac.addApplicationItem({"com.getdropbox.dropbox", "Dropbox", 701}, "Item-0", 30);
        slack = mac.addApplicationItem({"com.tinyspeck.slackmacgap", "Slack", 702}, "Item-0", 26);
        separator = mac.createStatusItem(kVariableStatusItemLength);
        separator->setAutosaveName("quillet.separator");
        separator->setImage(SymbolImage{"ellipsis", "Quillet", true, std::nullopt, std::nullopt});
    }

    void post(MouseEventType type, double x, WindowID window,
              std::uint64_t flags = EventFlags::command, std::uint32_t field = 51) {
        mac.post(source, {type, {x, 12}, flags, {{field, window}}});
    }

    double minX(WindowID window) { return mac.statusItemFrame(window)->minX(); }
    WindowID separatorWindow() { return mac.ownStatusItem("quillet.separator")->window(); }

    SimulatedMac mac;
    EventSource source;
    std::shared_ptr<StatusItem> separator;
    WindowID battery = 0;
    WindowID dropbox = 0;
    WindowID slack = 0;
};

class CommandDragTest : public ::testing::Test, public DragScene {};

TEST_F(CommandDragTest, ALiftedItemFollowsThePointerWhileTheOthersCloseItsGap) {
    post(MouseEventType::leftMouseDown, 1300, slack);
    EXPECT_EQ(mac.menuBar().lifted(), slack);
    EXPECT_EQ(minX(separatorWindow()), 1298); // moved right into Slack's place
    EXPECT_EQ(mac.renderMenuBar(), "<separator> [Dropbox] [Battery] | [BentoBox] [Clock] ^[Slack]");

    post(MouseEventType::leftMouseDragged, 1380, slack);
    EXPECT_EQ(*mac.statusItemFrame(slack), makeRect(1374, 0, 26, 24));

    // Released on the battery's right half: Slack drops in right of it.
    post(MouseEventType::leftMouseUp, 1380, slack);
    post(MouseEventType::leftMouseUp, 1380, slack);
    EXPECT_EQ(mac.renderMenuBar(), "<separator> [Dropbox] [Battery] [Slack] | [BentoBox] [Clock]");
    EXPECT_EQ(minX(slack), 1366);
    EXPECT_EQ(minX(battery), 1324);
    EXPECT_EQ(minX(dropbox), 1294);
    EXPECT_FALSE(mac.menuBar().lifted());
}

TEST_F(CommandDragTest, TheReleasePointChoosesTheSlot) {
    // On the left half of an item: left of it.
    post(MouseEventType::leftMouseDown, 1280, separatorWindow());
    post(MouseEventType::leftMouseUp, 1330, separatorWindow());
    EXPECT_EQ(mac.renderMenuBar(), "[Slack] <separator> [Dropbox] [Battery] | [BentoBox] [Clock]");

    // Into the fixed part, or beyond the display: the right end of the movable items.
    post(MouseEventType::leftMouseDown, 1330, dropbox);
    post(MouseEventType::leftMouseUp, 1420, dropbox);
    EXPECT_EQ(mac.renderMenuBar(), "[Slack] <separator> [Battery] [Dropbox] | [BentoBox] [Clock]");
    post(MouseEventType::leftMouseDown, 1300, separatorWindow());
    post(MouseEventType::leftMouseUp, 2000, separatorWindow());
    EXPECT_EQ(mac.renderMenuBar(), "[Slack] [Battery] [Dropbox] <separator> | [BentoBox] [Clock]");

    // Left of every item, the pointer held at the display's edge: the left end.
    post(MouseEventType::leftMouseDown, 1370, separatorWindow(), EventFlags::command, 92);
    post(MouseEventType::leftMouseUp, -40, separatorWindow());
    EXPECT_EQ(mac.renderMenuBar(), "<separator> [Slack] [Battery] [Dropbox] | [BentoBox] [Clock]");
}

TEST_F(CommandDragTest, OnlyACommandDragOfAMovableItemOnScreenLiftsIt) {
    const std::string before = mac.renderMenuBar();
    auto dragFromTo = [&](WindowID window, double from, double to, std::uint64_t flags) {
        post(MouseEventType::leftMouseDown, from, window, flags);
        post(MouseEventType::leftMouseDragged, to, window, flags);
        post(MouseEventType::leftMouseUp, to, window, flags);
    };
    dragFromTo(slack, 1300, 1380, 0);
    dragFromTo(slack, 1300, 1380, EventFlags::option);
    dragFromTo(mac.menuBarOrder().back(), 1450, 1300, EventFlags::command); // the clock
    EXPECT_EQ(mac.renderMenuBar(), before);

    // Pushed off the screen, an item is out of the pointer's reach.
    auto zoom = mac.addApplicationItem({"us.zoom.xos", "zoom.us", 703}, "Item-0", 24);
    separator->setLength(10000);
    const std::string collapsed = mac.renderMenuBar();
    dragFromTo(zoom, minX(zoom) + 10, 1380, EventFlags::command);
    EXPECT_EQ(mac.renderMenuBar(), collapsed);
    EXPECT_EQ(collapsed,
              "(zoom.us) <separator 10000> [Slack] [Dropbox] [Battery] | [BentoBox] [Clock]");
}

TEST_F(CommandDragTest, AWindowThatVanishesWhileLiftedIsNotDropped) {
    post(MouseEventType::leftMouseDown, 1300, slack);
    mac.quitApplication(702);
    post(MouseEventType::leftMouseUp, 1380, slack);
    EXPECT_EQ(mac.renderMenuBar(), "<separator> [Dropbox] [Battery] | [BentoBox] [Clock]");
    EXPECT_FALSE(mac.statusItemFrame(slack));

    // Every posted event was recorded, drop or no drop.
    std::vector<MouseEventType> types;
    for (const auto& posted : mac.input().events()) {
        types.push_back(posted.event.type);
    }
    EXPECT_THAT(types, ElementsAre(MouseEventType::leftMouseDown, MouseEventType::leftMouseUp));
}

// Dropbox (1320..1350, grabbed at its centre) dragged in one move to x = 1290, over the left
// edge of Slack: where it drops, and where Slack stands while Dropbox is lifted, under each model.
TEST_F(CommandDragTest, EachDropModelDropsByItsOwnRule) {
    struct Expectation {
        sim::DropModel model;
        double slackWhileLifted;
        std::string dropped;
    };
    const std::vector<Expectation> expectations{
        // The gap closes at once; the pointer is left of every item at release.
        {sim::DropModel::slotAtRelease, 1324,
         "[Dropbox] <separator> [Slack] [Battery] | [BentoBox] [Clock]"},
        {sim::DropModel::nearestGapAtRelease, 1324,
         "[Dropbox] <separator> [Slack] [Battery] | [BentoBox] [Clock]"},
        // The gap stays until the pointer moves it: past Slack's middle, not the separator's.
        {sim::DropModel::liveByPointer, 1294,
         "<separator> [Dropbox] [Slack] [Battery] | [BentoBox] [Clock]"},
        // The dragged item's left edge (1275) has crossed both middles.
        {sim::DropModel::liveByLeadingEdge, 1294,
         "[Dropbox] <separator> [Slack] [Battery] | [BentoBox] [Clock]"},
        // ... but passed only all of Slack.
        {sim::DropModel::liveByWholeItem, 1294,
         "<separator> [Dropbox] [Slack] [Battery] | [BentoBox] [Clock]"},
    };
    for (const auto& expected : expectations) {
        DragScene scene;
        scene.mac.setDropModel(expected.model);
        scene.post(MouseEventType::leftMouseDown, 1335, scene.dropbox);
        EXPECT_EQ(scene.minX(scene.slack), expected.slackWhileLifted);
        scene.post(MouseEventType::leftMouseDragged, 1290, scene.dropbox);
        scene.post(MouseEventType::leftMouseUp, 1290, scene.dropbox);
        EXPECT_EQ(scene.mac.renderMenuBar(), expected.dropped) << static_cast<int>(expected.model);
    }
}

// In a live model the neighbours make way while the item is dragged, the anchor included: a drop
// aimed beside an anchor's old place may land elsewhere.
TEST_F(CommandDragTest, InALiveModelTheNeighboursShiftDuringTheDrag) {
    mac.setDropModel(sim::DropModel::liveByLeadingEdge);
    post(MouseEventType::leftMouseDown, 1283, separatorWindow());
    post(MouseEventType::leftMouseDragged, 1290, separatorWindow());
    EXPECT_EQ(minX(slack), 1294); // the separator's right edge has not reached Slack's middle
    post(MouseEventType::leftMouseDragged, 1310, separatorWindow());
    EXPECT_EQ(minX(slack), 1272); // it has: Slack shifts into the separator's place
    post(MouseEventType::leftMouseDragged, 1340, separatorWindow());
    EXPECT_EQ(minX(dropbox), 1298);
    post(MouseEventType::leftMouseUp, 1340, separatorWindow());
    EXPECT_EQ(mac.renderMenuBar(), "[Slack] [Dropbox] <separator> [Battery] | [BentoBox] [Clock]");
}

// An application's item comes back where a Command-drag last left it; one never dragged comes
// back at the left end.
TEST_F(CommandDragTest, ARelaunchedApplicationsItemReturnsWhereItWasDropped) {
    post(MouseEventType::leftMouseDown, 1307, slack);
    post(MouseEventType::leftMouseUp, 1380, slack);
    ASSERT_EQ(mac.renderMenuBar(), "<separator> [Dropbox] [Battery] [Slack] | [BentoBox] [Clock]");
    mac.quitApplication(702);
    mac.quitApplication(701);
    mac.addApplicationItem({"com.getdropbox.dropbox", "Dropbox", 801}, "Item-0", 30);
    mac.addApplicationItem({"com.tinyspeck.slackmacgap", "Slack", 802}, "Item-0", 26);
    EXPECT_EQ(mac.renderMenuBar(), "[Dropbox] <separator> [Battery] [Slack] | [BentoBox] [Clock]");
}

} // namespace
} // namespace quillet
