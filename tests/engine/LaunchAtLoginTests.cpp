#include "core/engine/LaunchAtLogin.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/app/SimulatedApplication.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using ::testing::ElementsAre;

// The switch's other cases run end to end in the General pane's tests.
TEST(LaunchAtLogin, AFailureIsOnlyLoggedAndTheStateComesFromThePlatform) {
    sim::SimulatedLoginItem service;
    sim::SimulatedLog log;
    LaunchAtLogin launchAtLogin{service, log};
    service.refuseWith("Operation not permitted");
    launchAtLogin.setEnabled(true);
    EXPECT_THAT(log.lines(),
                ElementsAre("[Quillet] LaunchAtLogin toggle failed: Operation not permitted"));
    EXPECT_FALSE(launchAtLogin.isEnabled());

    service.refuseWith(std::nullopt);
    launchAtLogin.setEnabled(true);
    service.refuseWith("The operation couldn’t be completed.");
    launchAtLogin.setEnabled(false);
    EXPECT_EQ(log.lines().back(),
              "[Quillet] LaunchAtLogin toggle failed: The operation couldn’t be completed.");
    EXPECT_TRUE(launchAtLogin.isEnabled());
}

} // namespace
} // namespace quillet
