// Quillet doing nothing, and Quillet on its hot paths: what an idle minute, a pointer move away
// from the menu bar and a hot key reveal cost.

#include "core/engine/ControlItemManager.hpp"
#include "core/prefs/HotKeyOption.hpp"
#include "tools/bench/BenchQuillet.hpp"
#include "tools/bench/Figures.hpp"

#include <cstdio>
#include <optional>

namespace quillet::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kItems = 40;
constexpr int kIdleMinutes = 10;

// Forty running applications, every second one ruled hidden and every sixth always hidden, so
// that the bar collapses once arranged and the hot key has something to show.
void stageBar(BenchQuillet& quillet) {
    std::vector<sim::SimulatedMac::Application> apps;
    SectionRules rules;
    for (int i = 0; i < kItems; ++i) {
        apps.push_back(benchApplication(i));
        if (i % 2 == 1) {
            rules[apps.back().bundleID] =
                i % 6 == 5 ? MenuBarSection::alwaysHidden : MenuBarSection::hidden;
        }
    }
    addRunning(quillet.mac(), apps);
    quillet.preferences().setSectionByBundleID(rules);
}

void printIdle(BenchQuillet& quillet) {
    const std::size_t pendingOnceIdle = quillet.world.scheduler.pendingJobs();
    const auto reads = quillet.windows.reads();
    const auto turns = quillet.mainThread.turns;
    quillet.world.scheduler.advance(std::chrono::minutes(kIdleMinutes));
    std::printf("  idle after launch with %d items: %zu timers pending once idle, %zu after %d "
                "more minutes (aim 0)\n",
                kItems, pendingOnceIdle, quillet.world.scheduler.pendingJobs(), kIdleMinutes);
    std::printf("  per idle minute: %.1f window-list reads (aim 0), %.1f main-loop turns\n",
                double(quillet.windows.reads() - reads) / kIdleMinutes,
                double(quillet.mainThread.turns - turns) / kIdleMinutes);
}

// Pointer moves below the menu bar, each delivered to the monitors and whatever it posts run.
void printPointerMoves(BenchQuillet& quillet, int moves) {
    const Rect display = quillet.mac().mainDisplayBounds();
    const auto reads = quillet.windows.reads();
    const auto start = threadCPUTime();
    for (int i = 0; i < moves; ++i) {
        quillet.world.pointer.moveTo({50.0 + i % 1000, display.height() / 2 - i % 300});
        quillet.world.scheduler.runDue();
    }
    const double nanoseconds =
        std::chrono::duration<double, std::nano>(threadCPUTime() - start).count();
    std::printf("  per pointer move outside the menu bar (%d moves): %.0f ns CPU (aim well under "
                "1000 ns), %.3f window-list reads (aim 0)\n",
                moves, nanoseconds / moves, double(quillet.windows.reads() - reads) / moves);
}

// The hot key on a collapsed bar: the turns of the main loop until a hidden item is on the
// screen, counting the turn that handles the key press itself.
void printHotKeyReveal(BenchQuillet& quillet) {
    std::optional<WindowID> hiddenItem;
    for (const WindowID window : quillet.mac().menuBarOrder()) {
        if (quillet.mac().menuBar().item(window)->title == benchApplication(1).bundleID) {
            hiddenItem = window;
        }
    }
    const auto shown = [&] {
        const auto frame = hiddenItem ? quillet.mac().statusItemFrame(*hiddenItem) : std::nullopt;
        return frame && frame->maxX() > 0;
    };
    if (shown() || quillet.delegate.controlManager->isExpanded()) {
        std::printf("  hot key reveal: not measured, the bar is not collapsed once idle\n");
        return;
    }
    const auto reads = quillet.windows.reads();
    const auto turns = quillet.mainThread.turns;
    std::optional<std::uint64_t> shownAfter;
    quillet.mainThread.afterTurn = [&] {
        if (!shownAfter && shown()) {
            shownAfter = 1 + quillet.mainThread.turns - turns;
        }
    };
    const HotKeyOption key = quillet.preferences().hotKey();
    quillet.world.hotKeys.press(keyCode(key), modifierMask(key));
    if (shown()) {
        shownAfter = 1;
    }
    const auto readsUntilShown = quillet.windows.reads() - reads;
    quillet.world.scheduler.advance(5s);
    quillet.mainThread.afterTurn = nullptr;
    std::printf("  hot key reveal: items show after %s main-loop turns (aim 1), %llu window-list "
                "reads until then, %llu in the 5 s after the press\n",
                shownAfter ? std::to_string(*shownAfter).c_str() : "never",
                static_cast<unsigned long long>(readsUntilShown),
                static_cast<unsigned long long>(quillet.windows.reads() - reads));
}

} // namespace

void printIdleAndHotPathFigures(const FigureOptions& options) {
    std::printf("\n== Idle and hot paths\n");
    BenchQuillet quillet;
    stageBar(quillet);
    quillet.launch();
    quillet.settle();
    printIdle(quillet);
    printPointerMoves(quillet, options.brief ? 20000 : 1000000);
    printHotKeyReveal(quillet);
}

} // namespace quillet::bench
