#include "core/menubar/AXResolver.hpp"
#include "core/menubar/AppIcon.hpp"
#include "core/menubar/ItemImageCapture.hpp"
#include "sim/SimulatedMac.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimImage;
using sim::SimulatedMac;

std::string nameOf(const ImageRef& image) {
    return static_cast<const SimImage&>(*image).name();
}

TEST(AXResolver, TakesTheFirstRunningProcessWhoseStatusItemHasAWidth) {
    SimulatedMac mac;
    mac.setAccessibilityTrusted(true);
    mac.setRunningProcesses("com.example.app", {10, 11, 12});
    mac.setExtrasMenuBarChildFrame(10, makeRect(800, 0, 0, 24));
    mac.setExtrasMenuBarChildFrame(12, makeRect(900, 0, 28, 24));
    AXResolver resolver(mac, mac);
    EXPECT_EQ(resolver.firstExtraFrame(10), std::nullopt);
    EXPECT_EQ(resolver.menuBarItemFrame("com.example.app"), makeRect(900, 0, 28, 24));
    EXPECT_EQ(resolver.menuBarItemFrame("com.example.absent"), std::nullopt);
}

TEST(AppIcon, UsesTheApplicationsIconOrANeutralSymbol) {
    SimulatedMac mac;
    mac.installApplication("com.example.app", "/Applications/Example.app");
    AppIcon icons(mac, mac);
    EXPECT_EQ(nameOf(icons.forBundleID("com.example.app.helper")),
              "icon:/Applications/Example.app");
    EXPECT_EQ(nameOf(icons.forBundleID("org.unknown")), "symbol:app.dashed");
    EXPECT_EQ(nameOf(icons.forBundleID(std::nullopt)), "symbol:app.dashed");
}

class ItemImageCaptureTest : public ::testing::Test {
protected:
    ItemImageCaptureTest() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.addWindow(SimulatedMac::statusItemWindow(1, makeRect(100, 0, 30, 24), 5, "A", "a"));
        mac.addWindow(SimulatedMac::statusItemWindow(2, makeRect(200, 0, 0.5, 24), 5, "A", "b"));
    }
    SimulatedMac mac;
    ItemImageCapture capture{mac, mac};
};

TEST_F(ItemImageCaptureTest, NeedsPermissionAndNeverPrompts) {
    mac.setScreenRecordingAllowed(false);
    EXPECT_EQ(capture.capture(1), nullptr);
    EXPECT_EQ(mac.screenRecordingRequests(), 0);
}

TEST_F(ItemImageCaptureTest, ReturnsAPointSizedImageOrNothingForSlivers) {
    auto image = capture.capture(1);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->pointSize(), (Size{30, 24}));
    EXPECT_EQ(capture.capture(2), nullptr); // one pixel wide
    EXPECT_EQ(capture.capture(99), nullptr);
}

} // namespace
} // namespace quillet
