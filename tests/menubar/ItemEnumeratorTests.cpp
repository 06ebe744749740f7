#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

// Lower case as the C library's UTF-8 locale knows it: an oracle that shares nothing with the
// enumerator's own folding.
std::optional<std::locale> unicodeLocale() {
    for (const char* name : {"C.UTF-8", "en_US.UTF-8"}) {
        try {
            return std::locale(name);
        } catch (const std::runtime_error&) {
        }
    }
    return std::nullopt;
}

// UTF-8 of a character below U+0800, as every letter of the alphabets below is.
std::string utf8(char32_t c) {
    if (c < 0x80) {
        return std::string(1, static_cast<char>(c));
    }
    return {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
}

TEST_F(ItemEnumeratorTest, NamesThatDifferOnlyInCaseListOnceInEveryAlphabet) {
    const auto locale = unicodeLocale();
    if (!locale) {
        GTEST_SKIP() << "no UTF-8 locale to tell capitals from small letters";
    }
    const auto& oracle = std::use_facet<std::ctype<wchar_t>>(*locale);
    // Every character of ASCII's letters, Latin-1, Latin Extended-A, modern Greek and Cyrillic,
    // at both ends of a name: "À-À" and "à-à" are one item, "×-×" and "÷-÷" two.
    std::map<std::string, std::string> foldedName;
    WindowID id = 0;
    for (auto [first, last] : {std::pair<char32_t, char32_t>{U'A', U'z'},
                               {0xC0, 0x17F},
                               {0x386, 0x3CE},
                               {0x400, 0x45F}}) {
        for (char32_t c = first; c <= last; ++c) {
            const auto lower = static_cast<char32_t>(oracle.tolower(static_cast<wchar_t>(c)));
            if (c >= 0x80 && lower < 0x80) {
                continue; // "İ", whose small letter is an "i" with a combining dot
            }
            const std::string name = utf8(c) + "-" + utf8(c);
            foldedName[name] = utf8(lower) + "-" + utf8(lower);
            addItem(++id, 100, name, "Names", 600);
        }
    }
    std::map<std::string, std::vector<std::string>> listed; // by the name in lower case
    for (const MenuBarItem& item : enumerator.logicalItems(kOwnPID)) {
        listed[foldedName.at(item.displayLabel)].push_back(item.displayLabel);
    }
    for (const auto& [name, folded] : foldedName) {
        EXPECT_EQ(listed[folded].size(), 1u) << name << " lists as " << listed[folded].size();
    }
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
