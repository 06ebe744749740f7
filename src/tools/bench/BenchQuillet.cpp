#include "tools/bench/BenchQuillet.hpp"

#include "core/engine/ControlItemManager.hpp"

#include <ctime>
#include <fstream>
#include <unistd.h>

namespace quillet::bench {

BenchQuillet::BenchQuillet()
    : services(ports()),
      delegate(services, sim::SimulatedQuillet::offeringControllers(services, {})) {}

void BenchQuillet::settle() {
    constexpr int kMostMinutes = 120;
    int minutes = 0;
    do {
        world.scheduler.advance(std::chrono::minutes(1));
    } while (++minutes < kMostMinutes && delegate.controlManager &&
             delegate.controlManager->isLayoutBusy());
    world.scheduler.advance(sim::ScenarioPlayer::kIdleWait);
}

PlatformPorts BenchQuillet::ports() {
    const PlatformPorts plain = world.ports();
    return {.scheduler = mainThread,
            .application = plain.application,
            .process = plain.process,
            .windows = windows,
            .displays = plain.displays,
            .workspace = plain.workspace,
            .accessibility = plain.accessibility,
            .menuBarHost = plain.menuBarHost,
            .statusBar = plain.statusBar,
            .input = plain.input,
            .hotKeys = plain.hotKeys,
            .pointer = plain.pointer,
            .defaults = plain.defaults,
            .loginItem = plain.loginItem,
            .updater = plain.updater,
            .alerts = plain.alerts,
            .log = plain.log,
            .keys = plain.keys,
            .panels = plain.panels,
            .screenCapture = plain.screenCapture,
            .settingsWindows = plain.settingsWindows,
            .symbols = plain.symbols};
}

sim::SimulatedMac::Application benchApplication(int number) {
    return {"com.bench.app" + std::to_string(number), "App" + std::to_string(number),
            2000 + number};
}

void addRunning(sim::SimulatedMac& mac, const std::vector<sim::SimulatedMac::Application>& apps) {
    for (auto app = apps.rbegin(); app != apps.rend(); ++app) {
        mac.installApplication(app->bundleID, "/Applications/" + app->name + ".app");
        // Widths between 16 and 35 points, as menu bar icons come.
        mac.addApplicationItem(*app, app->bundleID, 16.0 + (app->pid * 7) % 20);
    }
}

std::chrono::nanoseconds threadCPUTime() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

std::uint64_t residentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::uint64_t size = 0;
    std::uint64_t resident = 0;
    if (!(statm >> size >> resident)) {
        return 0;
    }
    return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

} // namespace quillet::bench
