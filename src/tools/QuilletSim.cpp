// quillet-sim: runs Quillet's real core against a simulated Mac. `quillet-sim --help` lists
// its modes and options.
#include "core/app/CommandLine.hpp"
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/BarKind.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/support/Text.hpp"
#include "sim/BoundedFile.hpp"
#include "sim/HostProcessContext.hpp"
#include "sim/Recording.hpp"
#include "sim/StandardErrorLog.hpp"
#include "sim/app/Scenario.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/app/SimulatorCommandLine.hpp"
#include "sim/nav/SelfTestLaunch.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"
#include "sim/settings/SettingsLaunch.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace quillet;

constexpr const char* kUsage =
    "usage: quillet-sim [--scenario FILE] [--settings FILE] [--macos VERSION] [--drop-model "
    "MODEL]\n"
    "                   [--stats]\n"
    "       quillet-sim --nav-selftest [--scenario FILE] [--settings FILE] [--macos VERSION]\n"
    "       quillet-sim --open-settings [--tab=PANE] [--scenario FILE] [--settings FILE]\n"
    "                   [--macos VERSION]\n"
    "       quillet-sim --windows FILE --list-items [--raw]\n"
    "       quillet-sim --windows FILE --dump-raw [OUT]\n"
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
    "  --open-settings [--tab=PANE]\n"
    "                       launch Quillet with --open-settings on the scenario's menu bar and\n"
    "                       print the settings window on PANE (general, items or permissions)\n"
    "  --windows FILE --list-items [--raw]\n"
    "                       print the item listing the app would print for a recorded window list\n"
    "                       (on a recorded hosted bar, for its recorded accessibility tree)\n"
    "  --windows FILE --dump-raw [OUT]\n"
    "                       write the raw dump the app would write for it, to OUT or, as the\n"
    "                       app does, to quillet-raw.json in the home folder\n"
    "  --help               print this help\n"
    "\n"
    "Options of the scenario modes:\n"
    "  --scenario FILE      the scenario to play (JSON); the built-in one without it\n"
    "  --settings FILE      keep Quillet's user defaults in FILE between runs (it is rewritten)\n"
    "  --macos VERSION      the macOS the simulated Mac runs, over the scenario's own: 26 (the\n"
    "                       default; every status item a window of its own) or 27 and later\n"
    "                       (the hosted bar: no item windows, items dropped past half a\n"
    "                       display, an overflow menu, read through Accessibility)\n"
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

using sim::SimulatorCommandLine::value;

int fail(const std::string& message) {
    std::cerr << "quillet-sim: " << message << "\n";
    return 2;
}

// The file's text; nothing, with one line said, when it cannot be read.
std::optional<std::string> readFile(const std::string& file) {
    sim::BoundedFile read = sim::readBoundedFile(file);
    if (!read.text) {
        fail(file + " " + read.problem);
    }
    return read.text;
}

int playScenario(const std::vector<std::string>& arguments) {
    const auto file = value(arguments, "--scenario");
    const auto major = sim::SimulatorCommandLine::macOS(arguments);
    std::string text(major && *major >= kFirstHostedMacOS ? sim::Scenario::builtInHosted()
                                                          : std::string(sim::Scenario::builtIn()));
    if (file) {
        auto contents = readFile(*file);
        if (!contents) {
            return 2;
        }
        text = std::move(*contents);
    }
    auto parsed = sim::parseScenario(text);
    if (!parsed.value) {
        return fail(file ? *file + ": " + parsed.error : parsed.error);
    }
    if (major) {
        parsed.value->macOS = *major;
    }
    sim::StandardErrorLog log;
    std::optional<sim::FileKeyValueStore> settings;
    if (auto settingsFile = value(arguments, "--settings")) {
        // A missing file is a first run and is created; a missing folder is a typing mistake.
        const std::filesystem::path folder = std::filesystem::absolute(*settingsFile).parent_path();
        if (!std::filesystem::is_directory(folder)) {
            return fail(*settingsFile + ": there is no folder " + folder.string());
        }
        settings.emplace(*settingsFile, log);
    }
    if (CommandLine::hasFlag(arguments, CommandLine::kNavSelfTest)) {
        auto launch =
            sim::launchWithNavigationSelfTest(*parsed.value, settings ? &*settings : nullptr);
        std::cout << launch.standardOutput;
        return launch.quit ? 0 : fail("Quillet did not quit within a minute");
    }
    if (CommandLine::hasFlag(arguments, CommandLine::kOpenSettings)) {
        std::vector<std::string> tabs;
        std::copy_if(arguments.begin(), arguments.end(), std::back_inserter(tabs),
                     [](const std::string& a) { return a.starts_with(CommandLine::kTab); });
        for (const std::string& line :
             sim::launchWithSettingsOpen(*parsed.value, tabs, settings ? &*settings : nullptr)) {
            std::cout << line << "\n";
        }
        return 0;
    }
    auto dropModel = sim::DropModel::slotAtRelease;
    if (auto name = value(arguments, "--drop-model")) {
        auto known = std::find_if(kDropModels.begin(), kDropModels.end(),
                                  [&](const auto& model) { return model.first == *name; });
        if (known == kDropModels.end()) {
            return fail("unknown drop model " + quotedForMessage(*name) + " (see --help)");
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
        return 2;
    }
    auto parsed = sim::parseRecording(*text);
    if (!parsed.value) {
        return fail(file + ": " + parsed.error);
    }
    sim::SimulatedMac& mac = parsed.value->mac;
    sim::HostProcessContext process(arguments, parsed.value->ownPID, parsed.value->osMajorVersion);
    sim::StandardErrorLog log;
    ItemEnumerator enumerator(mac, mac, mac);
    HostedItemEnumerator hosted(mac, mac, mac);
    MenuBarDebug debug(enumerator, hosted, mac, mac, process, log);

    if (auto out = value(arguments, CommandLine::kDumpRaw);
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

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv, argv + argc);
    if (auto problem = sim::SimulatorCommandLine::problem(arguments)) {
        return fail(*problem);
    }
    if (CommandLine::hasFlag(arguments, "--help")) {
        std::cout << kUsage << "\n" << kHelp;
        return 0;
    }
    if (auto file = value(arguments, "--windows")) {
        return replayRecording(arguments, *file);
    }
    return playScenario(arguments);
}
