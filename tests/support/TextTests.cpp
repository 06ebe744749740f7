#include "core/support/Text.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace quillet {
namespace {

// A long name is cut, never inside a character, and says so.
TEST(QuotedForMessage, CutsLongNamesBetweenCharacters) {
    EXPECT_EQ(quotedForMessage("Wi‑Fi"), "\"Wi‑Fi\"");
    const std::string long59(59, 'a');
    EXPECT_EQ(quotedForMessage(long59 + "éclair"), "\"" + long59 + "…\"");
    EXPECT_EQ(quotedForMessage(long59 + "b"), "\"" + long59 + "b\"");
}

// Only the alphabets named in Text.hpp are folded: characters of other scripts (capitals among
// them, of two, three and four bytes), stray bytes and a sequence broken off come back as they
// were, wherever they stand.
TEST(Lowercased, LeavesOtherCharactersAndStrayBytesAsTheyWere) {
    const std::vector<std::string> pieces{"\u20ac",     "\u4e2d",     "\u0531", "\U0001F600",
                                          "\U00010400", "\U00010410", "\x80",   "\xbf",
                                          "\xff",       "\xc3(",      "7",      "-"};
    std::mt19937 random(20261124);
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (auto length = random() % 6 + 1; length > 0; --length) {
            text += pieces[random() % pieces.size()];
        }
        EXPECT_EQ(lowercased(text), text);
    }
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(LocalizedCaseInsensitiveCompare, SortsAsAMacUserReadsNames) {
    // Case never matters.
    EXPECT_EQ(localizedCaseInsensitiveCompare("dropbox", "DropBox"), 0);
    EXPECT_LT(localizedCaseInsensitiveCompare("apple", "Banana"), 0);
    // An accented letter sorts with its plain letter, after it only on a tie.
    EXPECT_LT(localizedCaseInsensitiveCompare("Élan", "Fig"), 0);
    EXPECT_LT(localizedCaseInsensitiveCompare("Elan", "Élan"), 0);
    EXPECT_EQ(localizedCaseInsensitiveCompare("ÉLAN", "élan"), 0);
    // Digits are characters, not numbers.
    EXPECT_LT(localizedCaseInsensitiveCompare("Item 10", "Item 2"), 0);
    EXPECT_LT(localizedCaseInsensitiveCompare("", "a"), 0);
}

// Random names over a small alphabet of cases, accents and digits always sort into one order:
// the comparison is a strict weak ordering, symmetric under swapping and blind to case.
TEST(LocalizedCaseInsensitiveCompare, IsAConsistentOrderOnRandomNames) {
    const std::vector<std::string> letters{"a", "A", "à", "À", "e", "é", "É", "z", "1", "2", " "};
    std::mt19937 random(20261124);
    std::vector<std::string> names(60);
    for (std::string& name : names) {
        const std::size_t length = random() % 4;
        for (std::size_t i = 0; i < length; ++i) {
            name += letters[random() % letters.size()];
        }
    }
    for (const std::string& a : names) {
        EXPECT_EQ(localizedCaseInsensitiveCompare(a, lowercased(a)), 0) << a;
        for (const std::string& b : names) {
            const int ab = sign(localizedCaseInsensitiveCompare(a, b));
            EXPECT_EQ(ab, -sign(localizedCaseInsensitiveCompare(b, a))) << a << " / " << b;
            for (const std::string& c : names) {
                if (ab < 0 && localizedCaseInsensitiveCompare(b, c) < 0) {
                    EXPECT_LT(localizedCaseInsensitiveCompare(a, c), 0) << a << b << c;
                }
            }
        }
    }
}

} // namespace
} // namespace quillet
