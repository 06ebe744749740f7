#include "core/app/MenuBarPresence.hpp"
#include "core/menubar/BarKind.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
        world.scheduler.advance(MenuBarPresence::kPlacementTime - 1s);
        EXPECT_THAT(world.alerts.shown(), IsEmpty());
        world.scheduler.advance(1min);
        world.scheduler.runUntilIdle();

        ASSERT_EQ(world.alerts.shown().size(), c.told ? 1u : 0u);
        if (c.told) {
            EXPECT_EQ(world.alerts.shown()[0].messageText,
                      "Quillet is switched off in the menu bar");
            world.alerts.choose(0);
            EXPECT_THAT(world.mac.openedURLs(), ElementsAre(MenuBarPresence::kMenuBarSettingsURL));
        }
    }
}

} // namespace
} // namespace quillet
