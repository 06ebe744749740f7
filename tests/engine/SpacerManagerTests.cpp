#include "core/engine/SpacerManager.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A status bar that keeps its items in creation order and remembers what was set on them.
class RecordingStatusBar : public StatusBarHost {
public:
    struct Item : StatusItem {
        double length_ = 0.0;
        std::string autosaveName;
        bool withButton = true;
        std::optional<SymbolImage> image;
        std::optional<std::string> toolTip;
        int buttonChanges = 0;

        double length() const override { return length_; }
        void setLength(double length) override { length_ = length; }
        void setAutosaveName(const std::string& name) override { autosaveName = name; }
        bool hasButton() const override { return withButton; }
        void setImage(const std::optional<SymbolImage>& value) override {
            image = value;
            ++buttonChanges;
        }
        void setToolTip(const std::optional<std::string>& value) override {
            toolTip = value;
            ++buttonChanges;
        }
        void setAction(std::function<void(std::optional<ButtonEvent>)>, std::uint64_t) override {
            ++buttonChanges;
        }
        double buttonHeight() const override { return 22.0; }
        void popUpMenu(const std::vector<MenuEntry>&, Point,
                       std::function<void(const std::string&)>) override {}
    };

    std::shared_ptr<StatusItem> createStatusItem(double length) override {
        auto item = std::make_shared<Item>();
        item->length_ = length;
        item->withButton = buttons;
        items.push_back(item);
        ++created;
        return item;
    }
    void removeStatusItem(const std::shared_ptr<StatusItem>& item) override {
        auto found = std::find(items.begin(), items.end(), item);
        ASSERT_NE(found, items.end()) << "removed an item the bar does not hold";
        removed.push_back((*found)->autosaveName);
        items.erase(found);
    }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& item : items) {
            result.push_back(item->autosaveName);
        }
        return result;
    }

    bool buttons = true;
    std::vector<std::shared_ptr<Item>> items;
    std::vector<std::string> removed;
    int created = 0;
};

class SpacerManagerTest : public ::testing::Test {
protected:
    RecordingStatusBar bar;
    SpacerManager spacers{bar};
};

TEST_F(SpacerManagerTest, NewSpacersAreNarrowDottedItemsNamedByTheirPosition) {
    spacers.setCount(2);
    EXPECT_THAT(bar.names(), ElementsAre("quillet.spacer0", "quillet.spacer1"));
    for (const auto& item : bar.items) {
        EXPECT_EQ(item->length(), 22.0);
        ASSERT_TRUE(item->image);
        EXPECT_EQ(item->image->symbolName, "circle.dotted");
        EXPECT_EQ(item->image->accessibilityDescription, "Spacer");
        EXPECT_TRUE(item->image->isTemplate);
        EXPECT_FALSE(item->image->pointSize);
        EXPECT_FALSE(item->image->weight);
        EXPECT_EQ(item->toolTip, "Quillet spacer — ⌘-drag to position");
    }
    EXPECT_EQ(spacers.spacers().size(), 2u);
}

TEST_F(SpacerManagerTest, CountIsClampedToWhatCanBeShown) {
    spacers.setCount(9);
    EXPECT_THAT(bar.names(), ElementsAre("quillet.spacer0", "quillet.spacer1", "quillet.spacer2",
                                         "quillet.spacer3", "quillet.spacer4"));
    spacers.setCount(-3);
    EXPECT_THAT(bar.names(), IsEmpty());
    EXPECT_THAT(spacers.spacers(), IsEmpty());
    EXPECT_THAT(bar.removed, ElementsAre("quillet.spacer4", "quillet.spacer3", "quillet.spacer2",
                                         "quillet.spacer1", "quillet.spacer0"));
}

TEST_F(SpacerManagerTest, ShrinkingRemovesTheNewestAndGrowingReusesTheirNames) {
    spacers.setCount(3);
    const auto oldest = bar.items.front();

    spacers.setCount(1);
    EXPECT_THAT(bar.removed, ElementsAre("quillet.spacer2", "quillet.spacer1"));
    EXPECT_THAT(bar.names(), ElementsAre("quillet.spacer0"));
    EXPECT_EQ(bar.items.front(), oldest);

    spacers.setCount(2);
    EXPECT_THAT(bar.names(), ElementsAre("quillet.spacer0", "quillet.spacer1"));
    EXPECT_EQ(bar.items.front(), oldest);
}

TEST_F(SpacerManagerTest, TheCurrentCountCreatesAndRemovesNothing) {
    spacers.setCount(2);
    const auto before = bar.items;
    spacers.setCount(2);
    EXPECT_EQ(bar.created, 2);
    EXPECT_THAT(bar.removed, IsEmpty());
    EXPECT_EQ(bar.items, before);

    spacers.setCount(0);
    spacers.setCount(-1);
    EXPECT_EQ(bar.created, 2);
    EXPECT_EQ(bar.removed.size(), 2u);
}

TEST_F(SpacerManagerTest, ItemsWithoutAButtonAreNamedButGetNoImageOrToolTip) {
    bar.buttons = false;
    spacers.setCount(1);
    ASSERT_EQ(bar.items.size(), 1u);
    EXPECT_EQ(bar.items[0]->autosaveName, "quillet.spacer0");
    EXPECT_EQ(bar.items[0]->length(), 22.0);
    EXPECT_EQ(bar.items[0]->buttonChanges, 0);
}

} // namespace
} // namespace quillet
