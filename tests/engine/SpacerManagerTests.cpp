#include "core/engine/SpacerManager.hpp"
#include "sim/SimulatedMac.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {
namespace {

using sim::SimulatedMac;

constexpr std::uint32_t kWindowIDField = 51;

// A 1512-point display with the fixed right part (clock, Control Center) and Dropbox left of it;
// new status items appear at the left end.
class SpacerManagerTest : public ::testing::Test {
protected:
    SpacerManagerTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.addControlCenterAndClock();
        mac.addApplicationItem({"com.getdropbox.dropbox", "Dropbox", 701}, "Item-0", 30);
    }

    std::shared_ptr<sim::SimStatusItem> spacer(int index) const {
        return mac.ownStatusItem("quillet.spacer" + std::to_string(index));
    }

    // A user's Command-drag of an item, released at `x`.
    void commandDrag(WindowID window, double x) {
        const EventSource source;
        const double start = mac.statusItemFrame(window)->midX();
        for (auto [type, at] : {std::pair{MouseEventType::leftMouseDown, start},
                                std::pair{MouseEventType::leftMouseUp, x}}) {
            mac.post(source, {type, {at, 12}, EventFlags::command, {{kWindowIDField, window}}});
        }
    }

    SimulatedMac mac;
    SpacerManager spacers{mac};
};

// How many spacers the bar shows, up to five, runs end to end in the General pane's tests.
TEST_F(SpacerManagerTest, ShrinkingRemovesTheNewestAndKeepsTheOldest) {
    spacers.setCount(3);
    const auto oldest = spacer(0);

    spacers.setCount(1);
    EXPECT_FALSE(spacer(2));
    EXPECT_FALSE(spacer(1));
    EXPECT_EQ(spacer(0), oldest);
    EXPECT_EQ(mac.renderMenuBar(), "<spacer0 22> [Dropbox] | [BentoBox] [Clock]");
    ASSERT_TRUE(oldest->image());
    EXPECT_EQ(oldest->image()->symbolName, "circle.dotted");
    EXPECT_EQ(oldest->toolTip(), "Quillet spacer — ⌘-drag to position");
}

// Naming by position is what lets a spacer the user placed come back to its place: macOS
// remembers positions by autosave name.
TEST_F(SpacerManagerTest, ASpacerRemovedAndAddedAgainReturnsWhereTheUserPutIt) {
    spacers.setCount(2);
    commandDrag(spacer(1)->window(), 1380);
    EXPECT_EQ(mac.renderMenuBar(), "<spacer0 22> [Dropbox] <spacer1 22> | [BentoBox] [Clock]");

    spacers.setCount(1);
    EXPECT_EQ(mac.renderMenuBar(), "<spacer0 22> [Dropbox] | [BentoBox] [Clock]");
    spacers.setCount(2);
    EXPECT_EQ(mac.renderMenuBar(), "<spacer0 22> [Dropbox] <spacer1 22> | [BentoBox] [Clock]");
}

// A status bar whose items have no button: only their length and name can be set.
class ButtonlessStatusBar : public StatusBarHost {
public:
    struct Item : StatusItem {
        double length_ = 0.0;
        std::string name;
        int buttonChanges = 0;

        double length() const override { return length_; }
        void setLength(double length) override { length_ = length; }
        void setAutosaveName(const std::string& newName) override { name = newName; }
        std::string autosaveName() const override { return name; }
        bool hasButton() const override { return false; }
        void setImage(const std::optional<SymbolImage>&) override { ++buttonChanges; }
        void setToolTip(const std::optional<std::string>&) override { ++buttonChanges; }
        void setAction(std::function<void(std::optional<ButtonEvent>)>, std::uint64_t) override {
            ++buttonChanges;
        }
        double buttonHeight() const override { return 0.0; }
        std::optional<Rect> windowFrame() const override { return std::nullopt; }
        void popUpMenu(const std::vector<MenuEntry>&, Point,
                       std::function<void(const std::string&)>) override {
            ++buttonChanges;
        }
    };

    std::shared_ptr<StatusItem> createStatusItem(double length) override {
        auto item = std::make_shared<Item>();
        item->length_ = length;
        items.push_back(item);
        return item;
    }
    void removeStatusItem(const std::shared_ptr<StatusItem>&) override {}

    std::vector<std::shared_ptr<Item>> items;
};

TEST(SpacerManager, ItemsWithoutAButtonAreNamedButGetNoImageOrToolTip) {
    ButtonlessStatusBar bar;
    SpacerManager spacers(bar);
    spacers.setCount(1);
    ASSERT_EQ(bar.items.size(), 1u);
    EXPECT_EQ(bar.items[0]->autosaveName(), "quillet.spacer0");
    EXPECT_EQ(bar.items[0]->length(), 22.0);
    EXPECT_EQ(bar.items[0]->buttonChanges, 0);
}

} // namespace
} // namespace quillet
