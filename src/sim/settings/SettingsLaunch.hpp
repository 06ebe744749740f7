#pragma once

#include <string>
#include <vector>

namespace quillet {
class KeyValueStore;
}

namespace quillet::sim {

struct Scenario;

// Launches Quillet with "--open-settings" and the given "--tab=" arguments (passed on as they
// are) on the scenario's menu bar (its steps are not played), lets the launch settle and returns
// the settings window as a user reads it; empty when no window came up. `settings` keeps the
// user defaults (in memory when null).
std::vector<std::string> launchWithSettingsOpen(const Scenario& scenario,
                                                const std::vector<std::string>& tabArguments,
                                                KeyValueStore* settings = nullptr);

} // namespace quillet::sim
