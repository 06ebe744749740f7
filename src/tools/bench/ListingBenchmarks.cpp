// How long listing the menu bar takes as the window list grows (Google Benchmark).
// Target: rawItems and logicalItems under 0.2 ms for 500 windows, growing linearly.
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedMac.hpp"

#include <benchmark/benchmark.h>

namespace {

using namespace quillet;

// A window list shaped like a busy Mac's: most windows are ordinary application windows, one in
// eight is a status item (some named by bundle identifier, some system items, some untitled).
sim::SimulatedMac generatedMac(int windows) {
    sim::SimulatedMac mac;
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, 0, 2560, 1440)});
    for (int i = 0; i < windows; ++i) {
        const auto id = static_cast<WindowID>(i + 1);
        const Pid pid = 1000 + i % 97;
        if (i % 8 != 0) {
            auto window = sim::SimulatedMac::statusItemWindow(
                id, makeRect(i % 1200, 100 + i % 300, 800, 600), pid, "App", "Document");
            window[WindowKey::layer] = {std::int64_t{0}};
            mac.addWindow(std::move(window));
            continue;
        }
        const double x = 1500.0 - (i / 8 % 60) * 24.0;
        std::string title = i % 3 == 0   ? "com.example.app" + std::to_string(i % 50)
                            : i % 3 == 1 ? "Battery-" + std::to_string(i % 5)
                                         : "Item-" + std::to_string(i % 9);
        mac.addWindow(sim::SimulatedMac::statusItemWindow(id, makeRect(x, 0, 24, 24), pid,
                                                          "Control Center", title));
        if (i % 3 == 0) {
            mac.installApplication(title, "/Applications/App" + std::to_string(i % 50) + ".app");
        }
    }
    return mac;
}

void BM_rawItems(benchmark::State& state) {
    auto mac = generatedMac(static_cast<int>(state.range(0)));
    ItemEnumerator enumerator(mac, mac, mac);
    for (auto _ : state) {
        benchmark::DoNotOptimize(enumerator.rawItems(4242));
    }
    state.SetComplexityN(state.range(0));
}

void BM_logicalItems(benchmark::State& state) {
    auto mac = generatedMac(static_cast<int>(state.range(0)));
    ItemEnumerator enumerator(mac, mac, mac);
    for (auto _ : state) {
        benchmark::DoNotOptimize(enumerator.logicalItems(4242));
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_rawItems)->Arg(100)->Arg(500)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_logicalItems)->Arg(100)->Arg(500)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);

} // namespace
