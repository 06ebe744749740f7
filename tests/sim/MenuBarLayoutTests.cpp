#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::MenuBarNaming;
using sim::SimulatedMac;
using ::testing::ElementsAre;

constexpr Pid kOwnPID = 4242;
constexpr Pid kControlCenterPID = 612;
const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};

SymbolImage symbol(const char* name) {
    return {name, "Quillet", true, std::nullopt, std::nullopt};
}

// A 1512-point display with the fixed right part (clock 1425..1512, Control Center 1392..1425),
// the battery (1350..1392) and Dropbox (1320..1350).
class MenuBarLayoutTest : public ::testing::Test {
protected:
    MenuBarLayoutTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setControlCenterPID(kControlCenterPID);
        mac.addControlCenterAndClock();
        battery = mac.addSystemItem("Battery", 42);
        dropbox = mac.addApplicationItem(kDropbox, "Item-0", 30);
    }

    std::shared_ptr<StatusItem> ownItem(const std::string& name, bool withImage = true) {
        auto item = mac.createStatusItem(kVariableStatusItemLength);
        item->setAutosaveName(name);
        if (withImage) {
            item->setImage(symbol("ellipsis"));
        }
        return item;
    }

    Rect frameOf(const std::shared_ptr<StatusItem>& item) {
        return *mac.statusItemFrame(std::static_pointer_cast<sim::SimStatusItem>(item)->window());
    }

    std::vector<MenuBarItem> items() { return ItemEnumerator(mac, mac, mac).rawItems(kOwnPID); }

    SimulatedMac mac;
    WindowID battery = 0;
    WindowID dropbox = 0;
};

// The frames themselves (each item as wide as its length, lined up leftwards from the right
// edge, a long separator pushing the rest off the screen) are what every end-to-end test reads.
TEST_F(MenuBarLayoutTest, NamesWindowsLikeMacOS26OrPerApplication) {
    auto separator = ownItem("quillet.separator");
    auto unnamed = mac.createStatusItem(kVariableStatusItemLength);

    auto owners = [&] {
        std::vector<std::string> result;
        for (const auto& item : items()) {
            result.push_back(item.ownerName + "/" + std::to_string(item.ownerPID) + "/" +
                             item.windowName.value_or(""));
        }
        return result;
    };
    // Window numbers follow creation: clock, Control Center, battery, Dropbox, ours.
    EXPECT_THAT(owners(),
                ElementsAre("Control Center/612/Clock", "Control Center/612/BentoBox-0",
                            "Control Center/612/Battery", "Control Center/612/Item-0",
                            "Control Center/612/quillet.separator", "Control Center/612/Item-1"));

    mac.setNaming(MenuBarNaming::perApplication);
    EXPECT_THAT(owners(), ElementsAre("Control Center/612/Clock", "Control Center/612/BentoBox",
                                      "Control Center/612/Battery", "Dropbox/701/Item-0",
                                      "Quillet/4242/quillet.separator", "Quillet/4242/Item-1"));
    auto listed = items();
    EXPECT_TRUE(listed[4].isOwnControlItem);
    EXPECT_FALSE(listed[3].isOwnControlItem);
}

TEST_F(MenuBarLayoutTest, OurItemsReturnToTheirRememberedPlace) {
    mac.addApplicationItem(kSlack, "Item-0", 26); // 1294..1320
    auto spacer = ownItem("quillet.spacer1");
    ASSERT_EQ(frameOf(spacer).minX(), 1272);

    // Dragged between Slack and Dropbox, then removed: 192 points from the right edge.
    auto window = std::static_pointer_cast<sim::SimStatusItem>(spacer)->window();
    const std::vector<std::pair<std::uint32_t, std::int64_t>> fields{{51, window}};
    EventSource source;
    mac.post(source, {MouseEventType::leftMouseDown, {1280, 10}, EventFlags::command, fields});
    mac.post(source, {MouseEventType::leftMouseUp, {1325, 10}, EventFlags::command, fields});
    EXPECT_EQ(frameOf(spacer), makeRect(1298, 0, 22, 24));
    spacer.reset();
    EXPECT_EQ(mac.menuBar().rememberedDistance("quillet.spacer1"), 192);
    EXPECT_EQ(items().size(), 5u);

    // Another name has no place yet and stays at the left end; the remembered one goes back.
    auto other = ownItem("quillet.spacer2");
    EXPECT_EQ(frameOf(other).minX(), 1272);
    auto again = ownItem("quillet.spacer1");
    EXPECT_EQ(frameOf(again), makeRect(1298, 0, 22, 24));

    // With Dropbox gone, no slot is 192 points from the edge: the nearest is left of Slack (188),
    // not left of the battery (162).
    again.reset();
    mac.removeStatusItemWindow(dropbox);
    auto third = ownItem("quillet.spacer1");
    EXPECT_EQ(mac.renderMenuBar(), "<spacer2> <spacer1> [Slack] [Battery] | [BentoBox] [Clock]");
}

TEST_F(MenuBarLayoutTest, TheBarDoesNotKeepItemsThatNobodyHolds) {
    auto kept = ownItem("quillet.toggle");
    auto removed = ownItem("quillet.separator");
    ownItem("quillet.alwaysSeparator"); // dropped at once, like an unretained NSStatusItem
    EXPECT_EQ(items().size(), 6u);

    mac.removeStatusItem(removed);
    removed->setLength(10000); // harmless once removed
    EXPECT_EQ(items().size(), 5u);
    EXPECT_EQ(mac.renderMenuBar(), "<toggle> [Dropbox] [Battery] | [BentoBox] [Clock]");
    EXPECT_EQ(mac.ownStatusItem("quillet.toggle"), kept);
    EXPECT_EQ(mac.ownStatusItem("quillet.separator"), nullptr);

    // When our process goes, so do its windows.
    mac.quitApplication(kOwnPID);
    EXPECT_EQ(mac.ownStatusItem("quillet.toggle"), nullptr);
    EXPECT_EQ(mac.renderMenuBar(), "[Dropbox] [Battery] | [BentoBox] [Clock]");
}

TEST_F(MenuBarLayoutTest, ButtonsSendTheirActionOnlyForTheirEventsAndMenusPerformHandlerEntries) {
    auto toggle = mac.createStatusItem(kVariableStatusItemLength);
    toggle->setAutosaveName("quillet.toggle");
    std::vector<std::uint32_t> clicks;
    toggle->setAction([&](std::optional<ButtonEvent> event) { clicks.push_back(event->type); }, 20);
    auto button = mac.ownStatusItem("quillet.toggle");
    EXPECT_TRUE(button->click(ButtonEvent{2, 0}));
    EXPECT_TRUE(button->click(ButtonEvent{4, EventFlags::control}));
    EXPECT_FALSE(button->click(ButtonEvent{1, 0}));
    EXPECT_THAT(clicks, ElementsAre(2u, 4u));
    EXPECT_EQ(toggle->buttonHeight(), 24);

    std::vector<std::string> performed;
    toggle->popUpMenu({{MenuEntry::Kind::item, "Settings…", "openSettings", ",", false,
                        MenuEntry::Target::handler},
                       {MenuEntry::Kind::item, "Quit Quillet", "terminate:", "q", false,
                        MenuEntry::Target::application}},
                      {0, 29}, [&](const std::string& action) { performed.push_back(action); });
    EXPECT_EQ(button->shownMenu()->location, (Point{0, 29}));
    EXPECT_FALSE(button->chooseMenuEntry("Nothing like it"));
    EXPECT_TRUE(button->chooseMenuEntry("Settings…"));
    EXPECT_FALSE(button->shownMenu());
    EXPECT_THAT(performed, ElementsAre("openSettings"));
}

} // namespace
} // namespace quillet
