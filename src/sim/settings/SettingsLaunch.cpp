#include "sim/settings/SettingsLaunch.hpp"

#include "core/app/CommandLine.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/app/SimulatedQuillet.hpp"

namespace quillet::sim {

std::vector<std::string> launchWithSettingsOpen(const Scenario& scenario,
                                                const std::vector<std::string>& tabArguments,
                                                KeyValueStore* settings) {
    std::vector<std::string> arguments{"Quillet", std::string(CommandLine::kOpenSettings)};
    arguments.insert(arguments.end(), tabArguments.begin(), tabArguments.end());
    SimulatedQuillet quillet(std::move(arguments), settings);
    ScenarioPlayer::stage(quillet, scenario);
    quillet.delegate.applicationDidFinishLaunching();
    quillet.world.scheduler.runUntilIdle();
    const SimSettingsWindow* window = quillet.world.settingsWindows.window();
    return window && window->isVisible() ? window->render() : std::vector<std::string>{};
}

} // namespace quillet::sim
