#include "core/prefs/DefaultsReading.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace quillet {
namespace {

using DefaultsReading::boolean;
using DefaultsReading::integer;
using testing::storedData;
using testing::storedText;
using Limits = std::numeric_limits<std::int64_t>;

TEST(DefaultsReading, BooleanReadCoercesNumbersAndStringsLikeTheUserDefaults) {
    EXPECT_FALSE(boolean(StoredValue{}));
    EXPECT_TRUE(boolean(StoredValue{true}));
    EXPECT_FALSE(boolean(StoredValue{false}));
    EXPECT_TRUE(boolean(StoredValue{std::int64_t{-3}}));
    EXPECT_FALSE(boolean(StoredValue{std::int64_t{0}}));
    EXPECT_TRUE(boolean(StoredValue{0.25}));
    EXPECT_FALSE(boolean(StoredValue{0.0}));
    EXPECT_FALSE(boolean(storedData("YES")));

    // Any of the six white-space characters may lead, as for strtol.
    for (const std::string space : {" ", "\t", "\n", "\r", "\v", "\f"}) {
        EXPECT_TRUE(boolean(storedText(space + "y"))) << int(space[0]);
        EXPECT_EQ(integer(storedText(space + "-7")), -7) << int(space[0]);
    }
    for (const char* yes : {"YES", "true", "t", "1", "  y", "-0001", "+9x", "Tomorrow"}) {
        EXPECT_TRUE(boolean(storedText(yes))) << yes;
    }
    for (const char* no : {"NO", "false", "0", "000", "", "  ", "--1", "+-1", "x1", "0.5"}) {
        EXPECT_FALSE(boolean(storedText(no))) << no;
    }
}

TEST(DefaultsReading, ExactBooleanTakesBooleansAndTheNumbersZeroAndOne) {
    using DefaultsReading::exactBoolean;
    EXPECT_EQ(exactBoolean(StoredValue{false}), false);
    EXPECT_EQ(exactBoolean(StoredValue{std::int64_t{1}}), true);
    EXPECT_EQ(exactBoolean(StoredValue{1.0}), true);
    for (const StoredValue& other : {StoredValue{}, StoredValue{std::int64_t{-1}}, StoredValue{0.5},
                                     storedText("YES"), storedData("1")}) {
        EXPECT_EQ(exactBoolean(other), std::nullopt);
    }
}

TEST(DefaultsReading, IntegerReadCoercesAndSaturates) {
    EXPECT_EQ(integer(StoredValue{}), 0);
    EXPECT_EQ(integer(StoredValue{true}), 1);
    EXPECT_EQ(integer(StoredValue{false}), 0);
    EXPECT_EQ(integer(StoredValue{Limits::min()}), Limits::min());
    EXPECT_EQ(integer(StoredValue{2.67}), 2);
    EXPECT_EQ(integer(StoredValue{-2.67}), -2);
    EXPECT_EQ(integer(StoredValue{1e30}), Limits::max());
    EXPECT_EQ(integer(StoredValue{-1e30}), Limits::min());
    EXPECT_EQ(integer(StoredValue{std::nan("")}), 0);
    EXPECT_EQ(integer(storedData("12")), 0);

    EXPECT_EQ(integer(storedText("123")), 123);
    EXPECT_EQ(integer(storedText("  -42 apples")), -42);
    EXPECT_EQ(integer(storedText("+7")), 7);
    EXPECT_EQ(integer(storedText("3.9")), 3);
    EXPECT_EQ(integer(storedText("abc")), 0);
    EXPECT_EQ(integer(storedText("--5")), 0);
    EXPECT_EQ(integer(storedText("9223372036854775807")), Limits::max());
    EXPECT_EQ(integer(storedText("9223372036854775808")), Limits::max());
    EXPECT_EQ(integer(storedText("-9223372036854775808")), Limits::min());
    EXPECT_EQ(integer(storedText("-99999999999999999999999")), Limits::min());
}

} // namespace
} // namespace quillet
