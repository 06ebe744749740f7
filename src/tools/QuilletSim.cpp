// quillet-sim: runs Quillet's real core against a simulated Mac.
//
//   quillet-sim [--scenario FILE] [--settings FILE]    play a scenario with Quillet running and
//                                                      print the menu bar after every step
//   quillet-sim --nav-selftest [--scenario FILE]      launch Quillet with --nav-selftest on the
//                                                      scenario's menu bar and print its verdict
//   quillet-sim --open-settings [--tab=PANE] [--scenario FILE] [--settings FILE]
//                                                     launch Quillet with --open-settings and
//                                                     print the settings window
//   quillet-sim --windows FILE --list-items [--raw]   print the item listing the app would print
//   quillet-sim --windows FILE --dump-raw OUT          write the raw dump the app would write
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
#include "sim/settings/SettingsLaunch.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace quillet;

constexpr const char* kUsage = "usage: quillet-sim --windows FILE --list-items [--raw]\n"
                               "       quillet-sim --windows FILE --dump-raw OUT\n";

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
    sim::ScenarioPlayer player(std::move(*parsed.value), settings ? &*settings : nullptr);
    player.play([](const std::string& line) { std::cout << line << "\n"; });
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

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv, argv + argc);
    if (auto file = optionValue(arguments, "--windows")) {
        return replayRecording(arguments, *file);
    }
    const bool onlyScenarioOptions =
        std::all_of(arguments.begin() + 1, arguments.end(), [&](const std::string& a) {
            return a == "--scenario" || a == "--settings" || a == CommandLine::kNavSelfTest ||
                   a == CommandLine::kOpenSettings || a.starts_with(CommandLine::kTab) ||
                   optionValue(arguments, "--scenario") == a ||
                   optionValue(arguments, "--settings") == a;
        });
    if (!onlyScenarioOptions) {
        std::cerr << kUsage;
        return 2;
    }
    return playScenario(arguments);
}
