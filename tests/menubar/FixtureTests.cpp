// Window lists recorded on real Macs (tests/fixtures), replayed through the item enumerator and the
// item listing. Every expectation below was worked out by hand from the recordings and the
// enumeration rules: which windows are items, what they are called, which application or system
// item they are, and where they sort.
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/Recording.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <optional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillet {
namespace {

// What one item is to the user: its window, label, bundle identifier ("" for none), the symbol of
// its system catalog row ("" for an item that is not a system item) and whether it is ours.
struct Row {
    WindowID id = 0;
    std::string label;
    std::string bundleID;
    std::string symbol;
    bool mine = false;
    friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& row, std::ostream* os) {
    *os << "{" << row.id << ", \"" << row.label << "\", \"" << row.bundleID << "\", \""
        << row.symbol << "\"" << (row.mine ? ", mine}" : "}");
}

Row rowOf(const MenuBarItem& item) {
    return {item.windowID, item.displayLabel, item.bundleID.value_or(""),
            item.systemInfo ? item.systemInfo->symbolName : "", item.isOwnControlItem};
}

std::vector<Row> rowsOf(const std::vector<MenuBarItem>& items) {
    std::vector<Row> rows;
    for (const MenuBarItem& item : items) {
        rows.push_back(rowOf(item));
    }
    return rows;
}

struct FixtureCase {
    const char* name;
    const char* file;
    std::vector<Row> raw;          // every item, in window-list order
    std::vector<WindowID> main;    // the main display's items, left to right
    std::vector<WindowID> logical; // one per logical item, leftmost first
};

void PrintTo(const FixtureCase& fixture, std::ostream* os) {
    *os << fixture.file;
}

// The raw rows of the given windows, in the given order.
std::vector<Row> rowsFor(const FixtureCase& fixture, const std::vector<WindowID>& ids) {
    std::vector<Row> rows;
    for (WindowID id : ids) {
        auto row = std::find_if(fixture.raw.begin(), fixture.raw.end(),
                                [&](const Row& candidate) { return candidate.id == id; });
        rows.push_back(row == fixture.raw.end() ? Row{id, "<not a raw item>", "", "", false}
                                                : *row);
    }
    return rows;
}

const std::string kWiFi = "Wi\u2011Fi";

const std::vector<FixtureCase>& fixtureCases() {
    static const std::vector<FixtureCase> cases{
        {"TahoeSingleDisplay",
         "tahoe-single-display.json",
         {{8101, "Control Center", "", "", false},
          {8035, "Clock", "", "clock", false},
          {8033, "Control Center", "", "switch.2", false},
          {8210, "Weather", "com.apple.weather.menu", "", false},
          {8302, "Item-0", "", "", false},
          {8305, "Item-0", "", "", false},
          {8040, "TextInputMenuAgent", "com.apple.TextInputMenuAgent", "", false},
          {8311, "Item-0", "", "", false},
          {8042, "Spotlight", "com.apple.Spotlight", "", false},
          {8037, kWiFi, "", "wifi", false},
          {8039, "Bluetooth", "", "dot.radiowaves.left.and.right", false},
          {8038, "Battery", "", "battery.100", false},
          {8407, "codexbar-merged", "", "circle.grid.2x2", false},
          {8412, "1Password", "com.1password.1password", "", false},
          {8415, "com.getdropbox.dropbox-statusItem", "com.getdropbox.dropbox-statusItem", "",
           false},
          {8501, "quillet.separator", "quillet.separator", "", true},
          {8502, "quillet.toggle", "quillet.toggle", "", true}},
         {8101, 8210, 8412, 8415, 8407, 8501, 8040, 8502, 8042, 8302, 8305, 8311, 8039, 8037, 8038,
          8033, 8035},
         {8210, 8412, 8415, 8407, 8040, 8042, 8039, 8037, 8038, 8033, 8035}},
        {"SequoiaAppOwnedItems",
         "sequoia-app-owned-items.json",
         {{14856, "Control Center", "", "switch.2", false},
          {14841, "TextInputMenuAgent", "", "", false},
          {14879, "Battery", "", "battery.100", false},
          {14862, kWiFi, "", "wifi", false},
          {14833, "Spotlight", "", "", false},
          {14890, "Clock", "", "clock", false},
          {15019, "quillet.separator", "quillet.separator", "", true},
          {15020, "quillet.toggle", "quillet.toggle", "", true},
          {310, "AppleTimeMachineExtra", "", "circle.grid.2x2", false},
          {1190, "Item-0", "", "", false},
          {1212, "Item-0", "", "", false},
          {14701, "Window", "", "", false},
          {1305, "OneDrive", "", "", false},
          {1120, "Karabiner-Menu", "", "", false}},
         {1120, 1305, 1212, 1190, 15019, 15020, 14701, 310, 14833, 14841, 14879, 14862, 14856,
          14890},
         {14701, 310, 14879, 14862, 14856, 14890}},
        {"TwoDisplays",
         "two-displays.json",
         {{2402, "Item-0", "", "", false},
          {2356, "quillet.toggle", "quillet.toggle", "", true},
          {2355, "codexbar-merged", "", "circle.grid.2x2", false},
          {2310, "Spotlight", "com.apple.Spotlight", "", false},
          {2190, kWiFi, "", "wifi", false},
          {2204, "Control Center", "", "switch.2", false},
          {2201, "Clock", "", "clock", false},
          {4101, "System Status Item Clone", "", "", false},
          {2205, "Control Center", "", "switch.2", false},
          {4102, "System Status Item Clone", "", "", false},
          {4103, "System Status Item Clone", "", "", false}},
         {2402, 2356, 2355, 2310, 2190, 2204, 2201},
         {4101, 2355, 2310, 2190, 2204, 2201}},
        {"OddWindows",
         "odd-windows.json",
         {{112, "layer-thirty", "", "", false},
          {111, "layer-twenty", "", "", false},
          {106, "Tall", "", "", false},
          {108, "wide-item", "", "", false},
          {114, "Hidden Example", "com.example.hidden", "", false},
          {115, "Item-7", "", "", false},
          {116, "FooBar-3", "", "circle.grid.2x2", false},
          {117, "Unknown (pid 0)", "", "", false},
          {118, "Unknown (pid 1234)", "", "", false},
          {0, "negative-number", "", "", false},
          {120, "Dup Example", "com.example.dup", "", false},
          {121, "com.example.dup-statusItem", "com.example.dup-statusItem", "", false},
          {122, "Twin Item", "", "", false},
          {123, "twin item", "", "", false},
          {124, "Twin Item", "com.example.twin", "", false},
          {125, "Quillet", "", "", true},
          {126, "quillet.spacer1", "quillet.spacer1", "", true},
          {127, "app.quillet.Quillet", "app.quillet.Quillet", "", true},
          {128, "app.quillet.Quillet", "app.quillet.Quillet", "", false},
          {129, "NumberTitle", "", "", false},
          {130, "orphan-item", "", "", false},
          {133, "edge-a", "", "", false},
          {134, "Item-9", "", "", false}},
         {106, 108, 111, 112, 116, 117, 118, 0,   120, 121, 122,
          123, 124, 125, 126, 127, 128, 129, 130, 133, 134},
         {108, 111, 112, 116, 0, 120, 124, 130, 133, 114}},
    };
    return cases;
}

sim::RecordingResult loadFixture(const std::string& file) {
    std::ifstream input(std::string(QUILLET_FIXTURES_DIR) + "/" + file, std::ios::binary);
    std::ostringstream text;
    text << input.rdbuf();
    return sim::parseRecording(text.str());
}

class RecordedMenuBar : public ::testing::TestWithParam<FixtureCase> {
protected:
    void SetUp() override {
        auto loaded = loadFixture(GetParam().file);
        ASSERT_TRUE(loaded.value) << GetParam().file << ": " << loaded.error;
        recording_ = std::move(loaded.value);
    }

    ItemEnumerator enumerator() const {
        return {recording_->mac, recording_->mac, recording_->mac};
    }
    Pid ownPID() const { return recording_->ownPID; }

private:
    std::optional<sim::Recording> recording_;
};

TEST_P(RecordedMenuBar, RawItemsAreThePlausibleWindowsInListOrder) {
    EXPECT_EQ(rowsOf(enumerator().rawItems(ownPID())), GetParam().raw);
}

TEST_P(RecordedMenuBar, MainDisplayItemsRunLeftToRightByRightEdge) {
    EXPECT_EQ(rowsOf(enumerator().mainDisplayItems(ownPID())),
              rowsFor(GetParam(), GetParam().main));
}

TEST_P(RecordedMenuBar, LogicalItemsAreMergedAndSortedByDistanceFromTheRightEdge) {
    EXPECT_EQ(rowsOf(enumerator().logicalItems(ownPID())), rowsFor(GetParam(), GetParam().logical));
}

TEST_P(RecordedMenuBar, ListingsCountAndNameTheItemsInOrder) {
    for (bool raw : {false, true}) {
        SCOPED_TRACE(raw ? "--list-items --raw" : "--list-items");
        const auto items =
            raw ? enumerator().mainDisplayItems(ownPID()) : enumerator().logicalItems(ownPID());
        const auto text = MenuBarDebug::listingDocument(items);
        ASSERT_TRUE(text);
        const auto document = nlohmann::json::parse(*text);
        const auto expected = rowsFor(GetParam(), raw ? GetParam().main : GetParam().logical);
        EXPECT_EQ(document.at("count"), expected.size());
        ASSERT_EQ(document.at("items").size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const auto& listed = document.at("items").at(i);
            EXPECT_EQ(listed.at("windowID"), expected[i].id) << "entry " << i;
            EXPECT_EQ(listed.at("label"), expected[i].label) << "entry " << i;
            EXPECT_EQ(listed.at("mine"), expected[i].mine) << "entry " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Fixtures, RecordedMenuBar, ::testing::ValuesIn(fixtureCases()),
                         [](const auto& fixture) { return std::string(fixture.param.name); });

// The odd values themselves: what each field falls back to, and the inclusive limits.
class OddWindowRecording : public ::testing::Test {
protected:
    void SetUp() override {
        auto loaded = loadFixture("odd-windows.json");
        ASSERT_TRUE(loaded.value) << loaded.error;
        recording_ = std::move(loaded.value);
        ItemEnumerator enumerator(recording_->mac, recording_->mac, recording_->mac);
        items_ = enumerator.rawItems(recording_->ownPID);
    }

    const MenuBarItem& item(WindowID id) const {
        auto found = std::find_if(items_.begin(), items_.end(), [&](const MenuBarItem& candidate) {
            return candidate.windowID == id;
        });
        if (found == items_.end()) {
            throw std::runtime_error("no item " + std::to_string(id));
        }
        return *found;
    }

private:
    std::optional<sim::Recording> recording_;
    std::vector<MenuBarItem> items_;
};

TEST_F(OddWindowRecording, UnreadableValuesFallBackToDefaults) {
    EXPECT_EQ(item(117).ownerPID, 0); // the process number was a string
    EXPECT_EQ(item(117).ownerName, "");
    EXPECT_EQ(item(118).ownerPID, 1234);
    EXPECT_EQ(item(118).ownerName, ""); // no owner name at all
    EXPECT_EQ(item(0).ownerPID, 319);   // the window number was negative
    EXPECT_FALSE(item(106).windowName); // an empty title
    EXPECT_FALSE(item(129).windowName); // a title that is a number
    EXPECT_FALSE(item(118).windowName); // no title at all
    EXPECT_EQ(item(130).ownerName, "");
    EXPECT_EQ(item(130).windowName, "orphan-item");

    const auto& unknown = item(116).systemInfo;
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->displayName, "FooBar-3");
    EXPECT_TRUE(unknown->movable);
    EXPECT_TRUE(unknown->hideable);
}

TEST_F(OddWindowRecording, LayerAndSizeLimitsAreInclusive) {
    EXPECT_EQ(item(111).layer, 20);
    EXPECT_EQ(item(112).layer, 30);
    EXPECT_EQ(item(106).frame, makeRect(100, 0, 30, 44.0));
    EXPECT_EQ(item(108).frame, makeRect(140, 0, 600.0, 24));
}

} // namespace
} // namespace quillet
