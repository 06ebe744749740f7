#include "core/support/Text.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace quillet {
namespace {

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

} // namespace
} // namespace quillet
