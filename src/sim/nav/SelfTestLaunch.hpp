#pragma once

#include "core/ports/Scheduler.hpp"

#include <chrono>
#include <string>

namespace quillet {
class KeyValueStore;
}

namespace quillet::sim {

struct Scenario;

// What Quillet launched with "--nav-selftest" did: what it printed, and whether it quit.
struct SelfTestLaunch {
    std::string standardOutput;
    bool quit = false;
};

// Launches Quillet with "--nav-selftest" on the scenario's menu bar (its steps are not played)
// and runs it until it quits, as the app's process would, or until `limit` has passed.
// `settings` keeps the user defaults (in memory when null).
SelfTestLaunch launchWithNavigationSelfTest(const Scenario& scenario,
                                            KeyValueStore* settings = nullptr,
                                            Duration limit = std::chrono::seconds(60));

} // namespace quillet::sim
