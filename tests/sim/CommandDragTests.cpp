#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimulatedMac;
using ::testing::ElementsAre;

// Right to left: clock 1425, Control Center 1392, battery 1350..1392, Dropbox 1320..1350,
// Slack 1294..1320, our separator 1272..1294.
class CommandDragTest : public ::testing::Test {
protected:
    CommandDragTest() {
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

} // namespace
} // namespace quillet
