#include "core/engine/LaunchAtLogin.hpp"
#include "sim/SimulatedLog.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace quillet {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The main application's login item as the service manager keeps it: registering enables it,
// unregistering disables it, unless the service refuses with an error.
class FakeLoginItem : public LoginItem {
public:
    static constexpr int kNotRegistered = 0;
    static constexpr int kEnabled = 1;
    static constexpr int kRequiresApproval = 2;
    static constexpr int kNotFound = 3;

    int status() const override { return status_; }
    std::optional<std::string> registerService() override {
        ++registerCalls;
        return answer(kEnabled);
    }
    std::optional<std::string> unregisterService() override {
        ++unregisterCalls;
        return answer(kNotRegistered);
    }

    int status_ = kNotRegistered;
    std::optional<std::string> failure;
    int registerCalls = 0;
    int unregisterCalls = 0;

private:
    std::optional<std::string> answer(int statusOnSuccess) {
        if (!failure) {
            status_ = statusOnSuccess;
        }
        return failure;
    }
};

class LaunchAtLoginTest : public ::testing::Test {
protected:
    FakeLoginItem service;
    sim::SimulatedLog log;
    LaunchAtLogin launchAtLogin{service, log};
};

TEST_F(LaunchAtLoginTest, SwitchingRegistersOrUnregistersTheMainApplication) {
    launchAtLogin.setEnabled(true);
    EXPECT_EQ(service.registerCalls, 1);
    EXPECT_TRUE(launchAtLogin.isEnabled());

    launchAtLogin.setEnabled(false);
    EXPECT_EQ(service.unregisterCalls, 1);
    EXPECT_FALSE(launchAtLogin.isEnabled());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LaunchAtLoginTest, EnablingWhenAlreadyEnabledRegistersAgain) {
    service.status_ = FakeLoginItem::kEnabled;
    launchAtLogin.setEnabled(true);
    EXPECT_EQ(service.registerCalls, 1);
    EXPECT_EQ(service.unregisterCalls, 0);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(LaunchAtLoginTest, AFailureIsOnlyLoggedAndTheStateComesFromThePlatform) {
    service.failure = "Operation not permitted";
    launchAtLogin.setEnabled(true);
    EXPECT_THAT(log.lines(),
                ElementsAre("[Quillet] LaunchAtLogin toggle failed: Operation not permitted"));
    EXPECT_EQ(service.registerCalls, 1);
    EXPECT_FALSE(launchAtLogin.isEnabled());

    service.status_ = FakeLoginItem::kEnabled;
    service.failure = "The operation couldn’t be completed.";
    launchAtLogin.setEnabled(false);
    EXPECT_THAT(log.lines(),
                ElementsAre("[Quillet] LaunchAtLogin toggle failed: Operation not permitted",
                            "[Quillet] LaunchAtLogin toggle failed: The operation couldn’t be "
                            "completed."));
    EXPECT_EQ(service.unregisterCalls, 1);
    EXPECT_TRUE(launchAtLogin.isEnabled());
}

TEST_F(LaunchAtLoginTest, OnlyTheEnabledStatusCountsAsOn) {
    for (int status : {FakeLoginItem::kNotRegistered, FakeLoginItem::kRequiresApproval,
                       FakeLoginItem::kNotFound, -1}) {
        service.status_ = status;
        EXPECT_FALSE(launchAtLogin.isEnabled()) << "status " << status;
    }
    service.status_ = FakeLoginItem::kEnabled;
    EXPECT_TRUE(launchAtLogin.isEnabled());
}

} // namespace
} // namespace quillet
