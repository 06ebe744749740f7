#include "core/menubar/SystemItemCatalog.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using SystemItemCatalog::info;

TEST(SystemItemCatalog, NumberedInstancesShareTheirRowButOtherSuffixesDoNot) {
    auto battery = info(std::optional<std::string>("Battery-2"), "Control Center");
    ASSERT_TRUE(battery);
    EXPECT_EQ(battery->displayName, "Battery");
    EXPECT_EQ(battery->symbolName, "battery.100");

    auto odd = info(std::optional<std::string>("Battery-2a"), "Control Center");
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->displayName, "Battery-2a");
    EXPECT_EQ(odd->symbolName, "circle.grid.2x2");
    EXPECT_TRUE(odd->movable);
    EXPECT_TRUE(odd->hideable);
}

TEST(SystemItemCatalog, OnlySystemOwnersAndPlainNamesAreLookedUp) {
    EXPECT_FALSE(info(std::optional<std::string>("Clock"), "Some App"));
    EXPECT_FALSE(info(std::optional<std::string>("Item-3"), "SystemUIServer"));
    EXPECT_FALSE(info(std::optional<std::string>("com.apple.menuextra.battery"), "Control Center"));
    EXPECT_FALSE(info(std::optional<std::string>(), "Control Center"));
    EXPECT_FALSE(info(std::optional<std::string>(""), "Control Center"));
    EXPECT_TRUE(info(std::optional<std::string>("Clock"), "SystemUIServer"));
}

TEST(SystemItemCatalog, RuleKeysNeedTheirPrefix) {
    auto wifi = info(std::string_view("sys:WiFi"));
    ASSERT_TRUE(wifi);
    EXPECT_EQ(wifi->displayName, "Wi\u2011Fi");
    EXPECT_FALSE(info(std::string_view("WiFi")));

    auto unknown = info(std::string_view("sys:Unknown-7"));
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->displayName, "Unknown-7");
    EXPECT_TRUE(unknown->movable && unknown->hideable);
}

TEST(SystemItemCatalog, CapabilitiesFollowTheTable) {
    EXPECT_EQ(SystemItemCatalog::known().size(), 22u);
    auto control = info(std::string_view("sys:BentoBox-0"));
    ASSERT_TRUE(control);
    EXPECT_FALSE(control->movable);
    auto recording = info(std::string_view("sys:AudioVideoModule"));
    ASSERT_TRUE(recording);
    EXPECT_TRUE(recording->movable);
    EXPECT_FALSE(recording->hideable);
}

} // namespace
} // namespace quillet
