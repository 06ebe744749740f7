#include "core/prefs/HotKeyOption.hpp"
#include "core/prefs/MenuBarSection.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet {
namespace {

TEST(MenuBarSection, CasesRawValuesAndLabelsInPickerOrder) {
    std::vector<std::string> rows;
    for (MenuBarSection section : allMenuBarSections) {
        rows.push_back(std::string(rawValue(section)) + "=" + std::string(shortLabel(section)));
        EXPECT_EQ(menuBarSection(rawValue(section)), section);
    }
    EXPECT_EQ(rows, (std::vector<std::string>{"visible=Show", "hidden=Hide", "alwaysHidden=Always",
                                              "dynamic=Auto"}));
}

TEST(MenuBarSection, ParsingIsExactAndCaseSensitive) {
    for (std::string_view text : {"Hidden", "HIDDEN", " hidden", "hidden ", "alwayshidden",
                                  "always_hidden", "Show", "Auto", "", "visible\n"}) {
        EXPECT_FALSE(menuBarSection(text)) << text;
    }
    EXPECT_FALSE(menuBarSection(std::string_view("hidden\0", 7)));
}

TEST(HotKeyOption, CombinationsAsThePickerAndTheHotKeyServiceSeeThem) {
    struct Row {
        std::string_view raw;
        std::string_view title;
        std::uint32_t keyCode;
        std::uint32_t mask;
    };
    const std::vector<Row> expected{{"cmdShiftB", "⌘⇧B", 11, 768},
                                    {"optionCmdB", "⌥⌘B", 11, 2304},
                                    {"controlCmdB", "⌃⌘B", 11, 4352},
                                    {"cmdShiftM", "⌘⇧M", 46, 768},
                                    {"controlOptionB", "⌃⌥B", 11, 6144}};
    ASSERT_EQ(allHotKeyOptions.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const HotKeyOption option = allHotKeyOptions[i];
        EXPECT_EQ(rawValue(option), expected[i].raw);
        EXPECT_EQ(title(option), expected[i].title);
        EXPECT_EQ(keyCode(option), expected[i].keyCode);
        EXPECT_EQ(modifierMask(option), expected[i].mask);
        EXPECT_EQ(hotKeyOption(expected[i].raw), option);
    }
}

TEST(HotKeyOption, UnknownOrMiscasedStringsAreNoOption) {
    for (std::string_view text : {"CmdShiftB", "cmdshiftb", "cmdShiftB ", "", "⌘⇧B", "commandB"}) {
        EXPECT_FALSE(hotKeyOption(text)) << text;
    }
}

} // namespace
} // namespace quillet
