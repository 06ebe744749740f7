#include "core/app/BundleIdentity.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimulatedMac;
using ::testing::ElementsAre;

constexpr Pid kOwnPID = 4242;

class ItemEnumeratorTest : public ::testing::Test {
protected:
    ItemEnumeratorTest() { mac.setDisplays({makeRect(0, 0, 1512, 982)}); }

    // A status item window titled `title` whose right edge is at `maxX`.
    void addItem(WindowID id, double maxX, std::optional<std::string> title,
                 std::string owner = "Control Center", Pid pid = 500) {
        mac.addWindow(SimulatedMac::statusItemWindow(id, makeRect(maxX - 30, 0, 30, 24), pid,
                                                     std::move(owner), std::move(title)));
    }

    std::vector<WindowID> ids(const std::vector<MenuBarItem>& items) {
        std::vector<WindowID> result;
        for (const auto& item : items) {
            result.push_back(item.windowID);
        }
        return result;
    }

    std::vector<std::string> labels(const std::vector<MenuBarItem>& items) {
        std::vector<std::string> result;
        for (const auto& item : items) {
            result.push_back(item.displayLabel);
        }
        return result;
    }

    SimulatedMac mac;
    ItemEnumerator enumerator{mac, mac, mac};
};

TEST_F(ItemEnumeratorTest, KeepsOnlyWindowsOfMenuBarLayersAndSizes) {
    auto add = [&](WindowID id, std::int64_t layer, double width, double height) {
        auto window =
            SimulatedMac::statusItemWindow(id, makeRect(100, 0, width, height), 1, "App", "Title");
        window[WindowKey::layer] = {layer};
        mac.addWindow(window);
    };
    add(1, 19, 30, 24);
    add(2, 20, 30, 24);
    add(3, 30, 30, 24);
    add(4, 31, 30, 24);
    add(5, 25, 30, 44.0);
    add(6, 25, 30, 44.5);
    add(7, 25, 600.0, 24);
    add(8, 25, 600.5, 24);
    add(9, 25, 0, 24);
    EXPECT_THAT(ids(enumerator.rawItems(kOwnPID)), ElementsAre(2, 3, 5, 7));
}

TEST_F(ItemEnumeratorTest, SkipsWindowsWhoseLayerOrBoundsAreUnreadable) {
    auto window = [&](WindowID id) {
        return SimulatedMac::statusItemWindow(id, makeRect(100, 0, 30, 24), 1, "App", "Title");
    };
    auto stringLayer = window(1);
    stringLayer[WindowKey::layer] = {std::string("25")};
    auto fractionalLayer = window(2);
    fractionalLayer[WindowKey::layer] = {25.5};
    auto wholeDoubleLayer = window(3);
    wholeDoubleLayer[WindowKey::layer] = {25.0};
    auto noBounds = window(4);
    noBounds[WindowKey::bounds] = {};
    auto boundsWithoutHeight = window(5);
    boundsWithoutHeight[WindowKey::bounds] = {
        WindowValue::Dictionary{{"X", {1.0}}, {"Y", {0.0}}, {"Width", {30.0}}}};
    auto textInBounds = window(6);
    textInBounds[WindowKey::bounds] = {WindowValue::Dictionary{
        {"X", {std::string("1")}}, {"Y", {0.0}}, {"Width", {30.0}}, {"Height", {24.0}}}};
    auto boundsNotADictionary = window(7);
    boundsNotADictionary[WindowKey::bounds] = {std::string("{{0, 0}, {30, 24}}")};
    for (auto& w : {stringLayer, fractionalLayer, wholeDoubleLayer, noBounds, boundsWithoutHeight,
                    textInBounds, boundsNotADictionary}) {
        mac.addWindow(w);
    }
    EXPECT_THAT(ids(enumerator.rawItems(kOwnPID)), ElementsAre(3));
}

TEST_F(ItemEnumeratorTest, FillsDefaultsForMissingOrMistypedFields) {
    auto window = SimulatedMac::statusItemWindow(0, makeRect(100, 0, 30, 24), 0, "", "");
    window[WindowKey::ownerPID] = {std::string("1234")};
    window[WindowKey::number] = {std::int64_t{-5}};
    window[WindowKey::ownerName] = {};
    mac.addWindow(window);
    mac.addWindow(SimulatedMac::statusItemWindow(9, makeRect(200, 0, 30, 24), 1234, "", ""));

    auto items = enumerator.rawItems(kOwnPID);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].ownerPID, 0);
    EXPECT_EQ(items[0].windowID, 0u);
    EXPECT_EQ(items[0].ownerName, "");
    EXPECT_FALSE(items[0].windowName);
    EXPECT_EQ(items[0].displayLabel, "Unknown (pid 0)");
    EXPECT_EQ(items[1].displayLabel, "Unknown (pid 1234)");
}

TEST_F(ItemEnumeratorTest, RecognisesOurOwnWindowsByProcessOrName) {
    addItem(1, 300, "Something", "Quillet", kOwnPID);
    addItem(2, 400, "quillet.separator", "Control Center");
    addItem(3, 500, std::string(kBundleIdentifier), "Control Center");
    addItem(4, 600, "quillet", "Control Center");
    auto items = enumerator.rawItems(kOwnPID);
    ASSERT_EQ(items.size(), 4u);
    EXPECT_TRUE(items[0].isOwnControlItem);
    EXPECT_TRUE(items[1].isOwnControlItem);
    EXPECT_TRUE(items[2].isOwnControlItem);
    EXPECT_FALSE(items[3].isOwnControlItem);
    EXPECT_THAT(ids(enumerator.logicalItems(kOwnPID)), ElementsAre(4));
}

TEST_F(ItemEnumeratorTest, MainDisplayItemsRunLeftToRightAndKeepWindowOrderOnTies) {
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1920, 1080)});
    addItem(1, 1400, "Clock");
    addItem(2, 1300, "Item-0");
    addItem(3, 1700, "Battery");           // on the second display
    addItem(4, 1300, "com.example.twin");  // same right edge as window 2
    addItem(5, 1200, "quillet.separator"); // our own items are listed here too
    EXPECT_THAT(ids(enumerator.mainDisplayItems(kOwnPID)), ElementsAre(5, 2, 4, 1));
}

TEST_F(ItemEnumeratorTest, LogicalItemsMergeOneApplicationsWindows) {
    mac.installApplication("com.example.app", "/Applications/Example.app");
    addItem(1, 1400, "com.example.app");
    addItem(2, 1300, "com.example.app-statusItem");
    addItem(3, 1200, "Item-0");
    addItem(4, 1100, "Example", "Example"); // same label as the app, no bundle identifier
    auto raw = enumerator.rawItems(kOwnPID);
    EXPECT_EQ(raw.size(), 4u);
    auto logical = enumerator.logicalItems(kOwnPID);
    EXPECT_THAT(ids(logical), ElementsAre(1));
    EXPECT_EQ(logical[0].displayLabel, "Example");
}

TEST_F(ItemEnumeratorTest, SameLabelPrefersTheItemWithABundleIdentifierWhicheverComesFirst) {
    addItem(1, 1100, "Dropbox", "Dropbox");
    addItem(2, 1400, "com.getdropbox.dropbox", "Control Center");
    mac.installApplication("com.getdropbox.dropbox", "/Applications/Dropbox.app");
    EXPECT_THAT(ids(enumerator.logicalItems(kOwnPID)), ElementsAre(2));
}

TEST_F(ItemEnumeratorTest, LogicalItemsSortByDistanceFromTheirDisplaysRightEdge) {
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 1000, 900)});
    addItem(1, 1500, "Clock");   // 12 from the main display's edge
    addItem(2, 1100, "Battery"); // 412
    addItem(3, 2312, "WiFi");    // 200 from the second display's edge
    addItem(4, -500, "Sound");   // on no display: distance 0
    EXPECT_THAT(labels(enumerator.logicalItems(kOwnPID)),
                ElementsAre("Battery", "Wi\u2011Fi", "Clock", "Sound"));
}

TEST_F(ItemEnumeratorTest, WithoutDisplaysEveryDistanceIsZeroAndWindowOrderStands) {
    mac.setDisplays({});
    addItem(1, 100, "Clock");
    addItem(2, 900, "Battery");
    addItem(3, 500, "WiFi");
    EXPECT_THAT(ids(enumerator.logicalItems(kOwnPID)), ElementsAre(1, 2, 3));
    EXPECT_TRUE(enumerator.mainDisplayItems(kOwnPID).empty());
}

TEST_F(ItemEnumeratorTest, AnUnreadableWindowListYieldsNothing) {
    addItem(1, 100, "Clock");
    mac.setWindowListAvailable(false);
    EXPECT_TRUE(enumerator.rawItems(kOwnPID).empty());
    EXPECT_TRUE(enumerator.logicalItems(kOwnPID).empty());
}

// A display list that loses a display between the count and the list.
class ShrinkingDisplays : public SimulatedMac {
public:
    std::vector<DisplayID> activeDisplays(std::uint32_t capacity) const override {
        auto all = SimulatedMac::activeDisplays(capacity);
        all.pop_back();
        return all;
    }
};

TEST(ActiveDisplayBounds, TrustsTheShorterOfCountAndList) {
    ShrinkingDisplays mac;
    mac.setDisplays({makeRect(0, 0, 100, 100), makeRect(100, 0, 100, 100)});
    ItemEnumerator enumerator(mac, mac, mac);
    EXPECT_THAT(enumerator.activeDisplayBounds(), ElementsAre(makeRect(0, 0, 100, 100)));
    mac.setDisplays({});
    EXPECT_TRUE(enumerator.activeDisplayBounds().empty());
}

} // namespace
} // namespace quillet
