#include "core/engine/UpdaterManager.hpp"

#include "core/engine/GuardedUpdater.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/app/SimulatedApplication.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

// A build that cannot update itself must never start the framework (Sparkle without its key
// alerts at every launch), and a check must tell the user so rather than do nothing visible.
TEST(GuardedUpdater, UpdatesOnlyWhenTheBuildCanAndOtherwiseSaysSoInAnAlert) {
    for (const bool available : {true, false}) {
        SCOPED_TRACE(available ? "available" : "unavailable");
        sim::SimulatedUpdater framework;
        framework.setAvailable(available);
        sim::SimulatedAlerts alerts;
        sim::SimulatedLog log;
        GuardedUpdater updater(framework, alerts, log);

        UpdaterManager manager(updater);
        manager.controller().checkForUpdates();
        manager.controller().checkForUpdates();

        EXPECT_EQ(framework.starts(), available ? 1 : 0);
        EXPECT_EQ(framework.checks(), available ? 2 : 0);
        const std::vector<Alert> expectedAlerts =
            available ? std::vector<Alert>{}
                      : std::vector<Alert>(2, GuardedUpdater::unavailableAlert());
        EXPECT_EQ(alerts.shown(), expectedAlerts);
        EXPECT_EQ(log.lines().size(), available ? 0U : 1U);
    }
    const Alert alert = GuardedUpdater::unavailableAlert();
    EXPECT_NE(alert.messageText.find("does not update itself"), std::string::npos);
    EXPECT_FALSE(alert.buttons.empty()) << "an alert the user cannot dismiss";
}

} // namespace
} // namespace quillet
