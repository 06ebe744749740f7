#include "core/triggers/ActiveAppMonitor.hpp"

#include <gtest/gtest.h>

namespace quillet {
namespace {

// The monitor's showing and hiding run end to end in the application delegate's tests.
TEST(ActiveAppMonitor, MatchesTheRuledApplicationAndItsDottedRelatives) {
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app", "com.example.app"));
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app", "com.example.app.agent"));
    EXPECT_TRUE(ActiveAppMonitor::matches("com.example.app.agent", "com.example.app"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.app", "com.example.application"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.application", "com.example.app"));
    EXPECT_FALSE(ActiveAppMonitor::matches("com.example.app", "Com.Example.App"));
}

} // namespace
} // namespace quillet
