#include "core/app/MenuBarPresence.hpp"
#include "core/menubar/BarKind.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

// Switched off under System Settings › Menu Bar, Quillet's items are made but never placed: the
// user hears so once, a few seconds after launch, with the way to the switch; on either bar.
// Where nothing can tell (the hosted bar without Accessibility), nothing is claimed.
TEST(MenuBarPresence, ASwitchedOffQuilletSaysSoOnceWithTheWayToTheSwitch) {
    struct Case {
        BarKind bar;
        bool allowed;
        bool trusted;
        bool told;
    };
    const Case cases[] = {
        {BarKind::perItemWindows, true, true, false},  {BarKind::perItemWindows, false, true, true},
        {BarKind::perItemWindows, false, false, true}, {BarKind::hosted, true, true, false},
        {BarKind::hosted, false, true, true},          {BarKind::hosted, false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "hosted " << (c.bar == BarKind::hosted) << ", allowed "
                                        << c.allowed << ", trusted " << c.trusted);
        sim::SimulatedQuillet quillet;
        auto& world = quillet.world;
        world.mac.setMenuBarKind(c.bar);
        world.mac.allowOwnItemsInMenuBar(c.allowed);
        world.mac.setAccessibilityTrusted(c.trusted);
        quillet.delegate.applicationDidFinishLaunching();
        // On the hosted bar the engine may have asked the user for a drag meanwhile.
        auto switchedOffAlerts = [&] {
            return std::ranges::count(world.alerts.shown(),
                                      std::string("Quillet is switched off in the menu bar"),
                                      &Alert::messageText);
        };
        world.scheduler.advance(MenuBarPresence::kPlacementTime - 1s);
        EXPECT_EQ(switchedOffAlerts(), 0);
        world.scheduler.advance(1min);
        world.scheduler.runUntilIdle();

        ASSERT_EQ(switchedOffAlerts(), c.told ? 1 : 0);
        while (world.alerts.choose(0)) {
        }
        if (c.told) {
            EXPECT_THAT(world.mac.openedURLs(), ElementsAre(MenuBarPresence::kMenuBarSettingsURL));
        }
    }
}

} // namespace
} // namespace quillet
