#include "core/engine/ControlItemManager.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <gtest/gtest.h>

#include <tuple>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using Reports = sim::SimulatedPointer::ButtonReports;

// However the toggle's button reports clicks, each click the user makes takes effect once: a
// plain or Option-click shows or hides, a right or Control-click opens the menu, a
// Command-click (the user moving the toggle) does neither. On the hosted bar, where our own
// frames are one placeholder, the clicks are found on the toggle where the bar shows it.
TEST(ToggleClicks, EveryClickTakesEffectOnceHoweverTheButtonReportsIt) {
    const std::tuple<Reports, Duration, bool, int> ways[] = {
        {Reports::everyClick, 0ms, false, 26},        {Reports::everyClick, 0ms, true, 26},
        {Reports::leftClicksPlain, 0ms, false, 26},   {Reports::leftClicksPlain, 50ms, false, 27},
        {Reports::leftClicksPlain, 300ms, false, 27},
    };
    for (const auto& [reports, delay, monitorsRefused, macOS] : ways) {
        SCOPED_TRACE(testing::Message()
                     << "reports " << static_cast<int>(reports) << " after " << delay.count()
                     << " ns, monitors refused " << monitorsRefused << ", macOS " << macOS);
        sim::SimulatedQuillet quillet;
        auto& world = quillet.world;
        world.runMacOS(macOS);
        world.pointer.refuseMonitors(monitorsRefused);
        world.pointer.setButtonReports(reports, delay);
        quillet.delegate.applicationDidFinishLaunching();
        world.scheduler.runUntilIdle();
        if (macOS >= 27) {
            // As Quillet asks on that bar, the user puts the toggle right of the separator.
            const auto separator = world.mac.ownStatusItem("quillet.separator")->window();
            world.mac.userCommandDrags(world.mac.ownStatusItem("quillet.toggle")->window(),
                                       world.mac.shownItemFrame(separator)->maxX() - 1);
            world.scheduler.runUntilIdle();
        }
        auto& manager = *quillet.delegate.controlManager;
        auto toggle = world.mac.ownStatusItem("quillet.toggle");
        auto click = [&](MouseEventType down, std::uint64_t flags) {
            world.pointer.clickOwnItem(toggle, down, flags);
            world.scheduler.advance(1s);
            world.scheduler.runUntilIdle();
        };
        const bool before = manager.isExpanded();

        click(MouseEventType::leftMouseDown, 0);
        EXPECT_EQ(manager.isExpanded(), !before);
        click(MouseEventType::leftMouseDown, EventFlags::option);
        EXPECT_EQ(manager.isExpanded(), before);
        click(MouseEventType::leftMouseDown, EventFlags::command);
        EXPECT_EQ(manager.isExpanded(), before);
        EXPECT_FALSE(toggle->shownMenu());

        // Two clicks in quick succession are two clicks.
        world.pointer.clickOwnItem(toggle, MouseEventType::leftMouseDown, 0);
        world.scheduler.advance(100ms);
        click(MouseEventType::leftMouseDown, 0);
        EXPECT_EQ(manager.isExpanded(), before);
        EXPECT_FALSE(toggle->shownMenu());

        if (reports == Reports::leftClicksPlain && monitorsRefused) {
            continue; // Nothing can tell a right click then.
        }
        click(MouseEventType::leftMouseDown, EventFlags::control);
        EXPECT_TRUE(toggle->shownMenu());
        EXPECT_EQ(manager.isExpanded(), before);
        toggle->chooseMenuEntry("Quit Quillet");
        click(MouseEventType::rightMouseDown, 0);
        EXPECT_TRUE(toggle->shownMenu());
        EXPECT_EQ(manager.isExpanded(), before);
    }
}

} // namespace
} // namespace quillet
