// quillet-sim: runs Quillet's real core against a simulated Mac. `quillet-sim --help` lists
// its modes and options.
#include "core/app/CommandLine.hpp"
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/HostProcessContext.hpp"
#include "sim/Recording.hpp"
#include "sim/StandardErrorLog.hpp"
#include "sim/app/Scenario.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/nav/SelfTestLaunch.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace quillet;

constexpr const char* kUsage =
    "usage: quillet-sim [--scenario FILE] [--settings FILE] [--drop-model MODEL] [--stats]\n"
    "       quillet-sim --nav-selftest [--scenario FILE] [--settings FILE]\n"
    "       quillet-sim --windows FILE --list-items [--raw]\n"
    "       quillet-sim --windows FILE --dump-raw OUT\n"
    "       quillet-sim --help\n";

constexpr const char* kHelp =
    "Runs Quillet's real core against a simulated Mac.\n"
    "\n"
    "Modes:\n"
    "  (default)            play a scenario with Quillet running: the menu bar after every\n"
    "                       step, then once idle (a minute after the last step), and whether\n"
    "                       every item is in the zone its rule gives\n"
    "  --nav-selftest       launch Quillet with --nav-selftest on the scenario's menu bar and\n"
    "                       print its verdict\n"
    "  --windows FILE --list-items [--raw]\n"
    "                       print the item listing the app would print for a recorded window list\n"
    "  --windows FILE --dump-raw OUT\n"
    "                       write the raw dump the app would write for it\n"
    "  --help               print this help\n"
    "\n"
    "Options of the scenario modes:\n"
    "  --scenario FILE      the scenario to play (JSON); the built-in one without it\n"
    "  --settings FILE      keep Quillet's user defaults in FILE between runs (it is rewritten)\n"
    "  --drop-model MODEL   how a Command-drag drops an item: slotAtRelease (the default),\n"
    "                       liveByPointer, liveByLeadingEdge, liveByWholeItem or\n"
    "                       nearestGapAtRelease\n"
    "  --stats              after the run, print the drags posted, the mover's attempts and\n"
    "                       moves, how long the cursor was hidden and the timers still pending\n"
    "                       once idle\n";

constexpr std::array<std::pair<std::string_view, sim::DropModel>, 5> kDropModels{{
    {"slotAtRelease", sim::DropModel::slotAtRelease},
    {"liveByPointer", sim::DropModel::liveByPointer},
    {"liveByLeadingEdge", sim::DropModel::liveByLeadingEdge},
    {"liveByWholeItem", sim::DropModel::liveByWholeItem},
    {"nearestGapAtRelease", sim::DropModel::nearestGapAtRelease},
}};

// The value after `option`, if the option is given.
std::optional<std::string> optionValue(const std::vector<std::string>& arguments,
                                       std::string_view option) {
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == option) {
            return arguments[i + 1];
        }
    }
    return std::nullopt;
}

int fail(const std::string& message) {
    std::cerr << "quillet-sim: " << message << "\n";
    return 2;
}

std::optional<std::string> readFile(const std::string& file) {
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        return std::nullopt;
    }
    std::stringstream text;
    text << input.rdbuf();
    return text.str();
}

int playScenario(const std::vector<std::string>& arguments) {
    std::string text(sim::Scenario::builtIn());
    if (auto file = optionValue(arguments, "--scenario")) {
        auto contents = readFile(*file);
        if (!contents) {
            return fail("cannot read " + *file);
        }
        text = std::move(*contents);
    }
    auto parsed = sim::parseScenario(text);
    if (!parsed.value) {
        return fail(parsed.error);
    }
    sim::StandardErrorLog log;
    std::optional<sim::FileKeyValueStore> settings;
    if (auto file = optionValue(arguments, "--settings")) {
        settings.emplace(*file, log);
    }
    if (CommandLine::hasFlag(arguments, CommandLine::kNavSelfTest)) {
        auto launch =
            sim::launchWithNavigationSelfTest(*parsed.value, settings ? &*settings : nullptr);
        std::cout << launch.standardOutput;
        return launch.quit ? 0 : fail("Quillet did not quit within a minute");
    }
    auto dropModel = sim::DropModel::slotAtRelease;
    if (auto name = optionValue(arguments, "--drop-model")) {
        auto known = std::find_if(kDropModels.begin(), kDropModels.end(),
                                  [&](const auto& model) { return model.first == *name; });
        if (known == kDropModels.end()) {
            return fail("unknown drop model " + *name + " (see --help)");
        }
        dropModel = known->second;
    }
    sim::ScenarioPlayer player(std::move(*parsed.value), settings ? &*settings : nullptr,
                               dropModel);
    const auto outcome = player.play([](const std::string& line) { std::cout << line << "\n"; });
    for (const std::string& line :
         sim::ScenarioPlayer::describe(outcome, CommandLine::hasFlag(arguments, "--stats"))) {
        std::cout << line << "\n";
    }
    return 0;
}

int replayRecording(const std::vector<std::string>& arguments, const std::string& file) {
    auto text = readFile(file);
    if (!text) {
        return fail("cannot read " + file);
    }
    auto parsed = sim::parseRecording(*text);
    if (!parsed.value) {
        return fail(file + ": " + parsed.error);
    }
    sim::SimulatedMac& mac = parsed.value->mac;
    sim::HostProcessContext process(arguments, parsed.value->ownPID);
    sim::StandardErrorLog log;
    ItemEnumerator enumerator(mac, mac, mac);
    MenuBarDebug debug(enumerator, mac, mac, process, log);

    if (auto out = optionValue(arguments, CommandLine::kDumpRaw);
        out && CommandLine::launchMode(arguments) == LaunchMode::dumpRaw) {
        debug.dumpRaw(*out);
        return 0;
    }
    if (CommandLine::runDiagnosticMode(CommandLine::launchMode(arguments), debug, process)) {
        return 0;
    }
    std::cerr << kUsage;
    return 2;
}

// Every argument is a scenario option or the value of one.
bool onlyScenarioOptions(const std::vector<std::string>& arguments) {
    constexpr std::array<std::string_view, 3> kWithValue{"--scenario", "--settings",
                                                         "--drop-model"};
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (std::find(kWithValue.begin(), kWithValue.end(), argument) != kWithValue.end()) {
            if (++i == arguments.size()) {
                return false;
            }
        } else if (argument != "--stats" && argument != CommandLine::kNavSelfTest) {
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv, argv + argc);
    if (CommandLine::hasFlag(arguments, "--help")) {
        std::cout << kUsage << "\n" << kHelp;
        return 0;
    }
    if (auto file = optionValue(arguments, "--windows")) {
        return replayRecording(arguments, *file);
    }
    if (!onlyScenarioOptions(arguments)) {
        std::cerr << kUsage;
        return 2;
    }
    return playScenario(arguments);
}
