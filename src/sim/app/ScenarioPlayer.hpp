#pragma once

#include "core/ports/Scheduler.hpp"
#include "sim/app/Scenario.hpp"

#include <chrono>

#include <functional>
#include <string>
#include <vector>

namespace quillet {
class AppPreferences;
class KeyValueStore;
} // namespace quillet

namespace quillet::sim {

struct SimulatedQuillet;
struct SimulatedWorld;

// Plays a scenario on a simulated Mac with the real Quillet on it, and prints the menu bar as a
// line of text after every step, with the virtual time and any new log lines.
//
// Steps that start layout work run until Quillet is idle again; pointer moves, hot key presses
// and clicks take effect at once and leave their timers (the hover conceal) for a later "wait".
class ScenarioPlayer {
public:
    using Printer = std::function<void(const std::string& line)>;

    // `settings` keeps the user defaults between runs (in memory when null). The scenario's
    // rules and profiles are stored only when the settings hold none yet, so that a second run
    // starts where the first one left off.
    explicit ScenarioPlayer(Scenario scenario, KeyValueStore* settings = nullptr,
                            DropModel dropModel = DropModel::slotAtRelease);

    // What a run leaves behind, a minute after its last step with nothing more happening.
    struct Outcome {
        // Items out of their zone (see ZoneCheck); empty when every item is in its zone.
        std::vector<std::string> zoneProblems;
        // Command-drags posted: one per attempt of the item mover.
        std::size_t dragsPosted = 0;
        // Moves asked of the item mover: each hides the cursor once.
        int moves = 0;
        Duration cursorHidden{0};
        // Timers and jobs still waiting then: anything but 0 is work that never settles.
        std::size_t pendingOnceIdle = 0;
    };

    // Plays every step, then lets a minute pass and prints the bar once more.
    Outcome play(const Printer& print);
    // The lines quillet-sim prints for an outcome: the zones, and the figures when asked.
    static std::vector<std::string> describe(const Outcome& outcome, bool withStats);

    // How long "once idle" waits after the last step.
    static constexpr Duration kIdleWait = std::chrono::minutes(1);

    // Puts the scenario's items into the bar and its rules and profiles into the settings.
    static void stage(SimulatedQuillet& quillet, const Scenario& scenario);
    // The figures of a world as it stands now (quillet-bench reads them of its own runs).
    static Outcome outcome(SimulatedWorld& world, const AppPreferences& preferences);

private:
    Scenario scenario_;
    KeyValueStore* settings_;
    DropModel dropModel_;
};

} // namespace quillet::sim
