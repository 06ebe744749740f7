#pragma once

#include "sim/app/Scenario.hpp"

#include <functional>
#include <string>

namespace quillet {
class KeyValueStore;
}

namespace quillet::sim {

struct SimulatedQuillet;

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
    explicit ScenarioPlayer(Scenario scenario, KeyValueStore* settings = nullptr);

    void play(const Printer& print);

    // Puts the scenario's items into the bar and its rules and profiles into the settings.
    static void stage(SimulatedQuillet& quillet, const Scenario& scenario);

private:
    Scenario scenario_;
    KeyValueStore* settings_;
};

} // namespace quillet::sim
