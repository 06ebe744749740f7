#include "core/support/BoundedJson.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace quillet {
namespace {

using nlohmann::json;

// `depth` arrays and objects inside one another, picked at random, around one string.
std::string nested(std::size_t depth, std::mt19937& random) {
    std::string open;
    std::string close;
    for (std::size_t i = 0; i < depth; ++i) {
        const bool array = random() % 2 == 0;
        open += array ? "[" : "{\"k\": ";
        // Closed in reverse below.
        close += array ? ']' : '}';
    }
    std::reverse(close.begin(), close.end());
    return open + "\"leaf\"" + close;
}

TEST(BoundedJson, TextsNestedPastTheLimitAreRefusedInOneLine) {
    std::mt19937 random(7);
    for (std::size_t depth : {std::size_t{0}, std::size_t{1}, kJsonDepthLimit - 1, kJsonDepthLimit,
                              kJsonDepthLimit + 1, std::size_t{100'000}}) {
        const std::string text = nested(depth, random);
        const BoundedJson parsed = parseBoundedJson(text);
        if (depth <= kJsonDepthLimit) {
            ASSERT_TRUE(parsed.document) << depth << ": " << parsed.problem;
            EXPECT_EQ(*parsed.document, json::parse(text));
        } else {
            EXPECT_FALSE(parsed.document) << depth;
            EXPECT_EQ(parsed.problem, "is nested deeper than 32 levels");
        }
    }
}

TEST(BoundedJson, TextsLargerThanTheLimitAreRefused) {
    std::string text = std::string(kJsonSizeLimit - 1, ' ') + "1";
    EXPECT_TRUE(parseBoundedJson(text).document);
    text += ' ';
    EXPECT_FALSE(parseBoundedJson(text).document);
    EXPECT_EQ(parseBoundedJson(text).problem, "is larger than 8 MB");
}

// Within the bounds, the parse is nlohmann's: the same documents, the same texts refused.
TEST(BoundedJson, TextsWithinTheBoundsParseAsTheParserReadsThem) {
    const std::string valid = R"({"a": [1, -2.5e3, true, null, {"b": "\u00e9\n"}], "c": {}})";
    std::mt19937 random(11);
    const std::string inserts = ",{}[]\":0e-\\";
    for (int i = 0; i < 2000; ++i) {
        std::string text = valid;
        for (auto edits = 1 + random() % 3; edits > 0; --edits) {
            const std::size_t at = random() % (text.size() + 1);
            if (random() % 2 == 0 && at < text.size()) {
                text.erase(at, 1);
            } else {
                text.insert(at, 1, inserts[random() % inserts.size()]);
            }
        }
        const json expected = json::parse(text, nullptr, false);
        const BoundedJson parsed = parseBoundedJson(text);
        ASSERT_EQ(parsed.document.has_value(), !expected.is_discarded()) << text;
        if (parsed.document) {
            ASSERT_EQ(*parsed.document, expected) << text;
        } else {
            ASSERT_EQ(parsed.problem, "is not valid JSON") << text;
        }
    }
}

} // namespace
} // namespace quillet
