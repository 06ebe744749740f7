#include "sim/nav/SelfTestLaunch.hpp"

#include "sim/app/ScenarioPlayer.hpp"
#include "sim/app/SimulatedQuillet.hpp"

namespace quillet::sim {

SelfTestLaunch launchWithNavigationSelfTest(const Scenario& scenario, KeyValueStore* settings,
                                            Duration limit) {
    SimulatedQuillet quillet({"Quillet", "--nav-selftest"}, settings);
    ScenarioPlayer::stage(quillet, scenario);
    quillet.delegate.applicationDidFinishLaunching();

    SimulatedApplication& application = quillet.world.application;
    VirtualScheduler& scheduler = quillet.world.scheduler;
    const Duration deadline = scheduler.now() + limit;
    // In steps of a millisecond, so that hardly anything runs after the request to quit.
    while (!application.isTerminated() && scheduler.now() < deadline) {
        scheduler.advance(std::chrono::milliseconds(1));
    }
    if (application.isTerminated()) {
        quillet.delegate.applicationWillTerminate();
    }
    return {quillet.world.process.standardOutput(), application.isTerminated()};
}

} // namespace quillet::sim
