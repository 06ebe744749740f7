#include "core/engine/HID.hpp"
#include "sim/SimulatedMac.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using sim::SimulatedMac;

TEST(HID, ReadsTheBoundsOfExactlyOneWindow) {
    SimulatedMac mac;
    mac.setDisplays({makeRect(0, 0, 1512, 982)});
    mac.addWindow(SimulatedMac::statusItemWindow(7, makeRect(1300, 0, 30, 24), 9, "A", "a"));
    auto malformed = SimulatedMac::statusItemWindow(8, makeRect(1200, 0, 30, 24), 9, "A", "b");
    malformed[WindowKey::bounds] = {WindowValue::Dictionary{{"X", {std::string("1200")}}}};
    mac.addWindow(malformed);
    auto noBounds = SimulatedMac::statusItemWindow(9, makeRect(1100, 0, 30, 24), 9, "A", "c");
    noBounds[WindowKey::bounds] = {};
    mac.addWindow(noBounds);
    auto item = mac.addSystemItem("Battery", 42);

    EXPECT_EQ(HID::frame(mac, 7), makeRect(1300, 0, 30, 24));
    EXPECT_EQ(HID::frame(mac, item), makeRect(1470, 0, 42, 24));
    EXPECT_EQ(HID::frame(mac, 8), std::nullopt);
    EXPECT_EQ(HID::frame(mac, 9), std::nullopt);
    EXPECT_EQ(HID::frame(mac, 10), std::nullopt);

    mac.setWindowListAvailable(false);
    EXPECT_EQ(HID::frame(mac, 7), std::nullopt);
}

// Should the window server describe more than one window, the first description counts.
TEST(HID, TakesTheFirstDescription) {
    class Bounds : public WindowRecord {
    public:
        explicit Bounds(double x) : x_(x) {}
        WindowValue value(WindowKey key) const override {
            if (key != WindowKey::bounds) {
                return {};
            }
            return {WindowValue::Dictionary{
                {"X", {x_}}, {"Y", {0.0}}, {"Width", {30.0}}, {"Height", {24.0}}}};
        }

    private:
        double x_;
    };
    class TwoDescriptions : public WindowListSource {
    public:
        bool visitWindowList(const Visitor&) const override { return false; }
        bool visitWindowDescription(WindowID, const Visitor& visit) const override {
            visit(Bounds(100));
            visit(Bounds(200));
            return true;
        }
    };
    EXPECT_EQ(HID::frame(TwoDescriptions(), 1), makeRect(100, 0, 30, 24));
}

} // namespace
} // namespace quillet
