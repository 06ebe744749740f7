#include "core/menubar/IdentityResolver.hpp"
#include "sim/SimulatedMac.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(IdentityResolver, RecognisesBundleIdentifierShapes) {
    EXPECT_TRUE(IdentityResolver::looksLikeBundleID("com.example.app"));
    EXPECT_TRUE(IdentityResolver::looksLikeBundleID("a.b"));
    EXPECT_TRUE(IdentityResolver::looksLikeBundleID(".a..b."));
    EXPECT_FALSE(IdentityResolver::looksLikeBundleID("My App.v2.beta"));
    EXPECT_FALSE(IdentityResolver::looksLikeBundleID("Battery"));
    EXPECT_FALSE(IdentityResolver::looksLikeBundleID("com."));
    EXPECT_FALSE(IdentityResolver::looksLikeBundleID("..."));
}

TEST(IdentityResolver, DropsOnlyATenCharacterTeamIdentifier) {
    EXPECT_EQ(IdentityResolver::bareBundleID("ABCDE12345.com.example.app"), "com.example.app");
    EXPECT_EQ(IdentityResolver::bareBundleID("ABCD12345.com.example.app"),
              "ABCD12345.com.example.app");
    EXPECT_EQ(IdentityResolver::bareBundleID("abcde12345.com.example.app"),
              "abcde12345.com.example.app");
    EXPECT_EQ(IdentityResolver::bareBundleID("ABCDE12345."), "ABCDE12345.");
    EXPECT_EQ(IdentityResolver::bareBundleID(".ABCDE12345.com.example"), "com.example");
    EXPECT_EQ(IdentityResolver::bareBundleID("com.example.app"), "com.example.app");
}

class ResolveTest : public ::testing::Test {
protected:
    MenuBarItem item(std::optional<std::string> title, std::string owner = "Control Center",
                     Pid pid = 77) {
        MenuBarItem result;
        result.windowName = std::move(title);
        result.ownerName = std::move(owner);
        result.ownerPID = pid;
        resolver.resolve(result);
        return result;
    }

    sim::SimulatedMac mac;
    IdentityResolver resolver{mac};
};

TEST_F(ResolveTest, FindsTheApplicationUnderAShortenedIdentifier) {
    mac.installApplication("com.example.app", "/Applications/Example.app");
    EXPECT_EQ(resolver.appDisplayName("com.example.app.agent"), "Example");
    EXPECT_EQ(resolver.appDisplayName("com.other.app"), std::nullopt);
    EXPECT_EQ(resolver.appDisplayName("com"), std::nullopt);
}

TEST_F(ResolveTest, NamesItemsByApplicationSystemCatalogTitleOrOwner) {
    mac.installApplication("com.example.app", "/Applications/Example.app");

    auto app = item("ABCDE12345.com.example.app");
    EXPECT_EQ(app.bundleID, "com.example.app");
    EXPECT_EQ(app.displayLabel, "Example");
    EXPECT_FALSE(app.systemInfo);

    auto uninstalled = item("org.nowhere.tool");
    EXPECT_EQ(uninstalled.bundleID, "org.nowhere.tool");
    EXPECT_EQ(uninstalled.displayLabel, "org.nowhere.tool");

    auto wifi = item("WiFi");
    EXPECT_FALSE(wifi.bundleID);
    ASSERT_TRUE(wifi.systemInfo);
    EXPECT_EQ(wifi.displayLabel, "Wi\u2011Fi");

    auto generic = item("Item-3");
    EXPECT_FALSE(generic.systemInfo);
    EXPECT_EQ(generic.displayLabel, "Item-3");

    auto appOwned = item("Clock", "SomeApp");
    EXPECT_FALSE(appOwned.systemInfo);
    EXPECT_EQ(appOwned.displayLabel, "Clock");

    EXPECT_EQ(item(std::nullopt, "Dropbox").displayLabel, "Dropbox");
    EXPECT_EQ(item(std::nullopt, "", 1234).displayLabel, "Unknown (pid 1234)");
}

} // namespace
} // namespace quillet
