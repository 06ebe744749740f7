#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/app/Services.hpp"
#include "core/nav/KeyboardNavController.hpp"
#include "core/settings/SettingsWindowController.hpp"
#include "sim/app/SimulatedWorld.hpp"

namespace quillet::sim {

// Quillet running on a simulated Mac: the world, the process-wide services over it and the
// application delegate, which launches when asked. The keyboard navigation and settings window
// hooks a test leaves empty are the real controllers', as in the app.
struct SimulatedQuillet {
    explicit SimulatedQuillet(std::vector<std::string> arguments = {"Quillet"},
                              KeyValueStore* userDefaults = nullptr, AppDelegate::Hooks hooks = {})
        : world(std::move(arguments)),
          services(userDefaults ? world.ports(*userDefaults) : world.ports()),
          delegate(services, offeringControllers(services, std::move(hooks))) {}

    // Runs every pending job before the delegate and the services go.
    ~SimulatedQuillet() { world.scheduler.runUntilIdle(); }

    static AppDelegate::Hooks offeringControllers(Services& services, AppDelegate::Hooks hooks) {
        services.keyboardNav().offerTo(hooks);
        services.settingsWindow().offerTo(hooks);
        return hooks;
    }

    SimulatedWorld world;
    Services services;
    AppDelegate delegate;
};

} // namespace quillet::sim
