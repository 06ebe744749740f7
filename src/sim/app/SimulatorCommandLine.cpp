#include "sim/app/SimulatorCommandLine.hpp"

#include "core/app/CommandLine.hpp"
#include "sim/SimulatedProcess.hpp"

#include <algorithm>
#include <array>
#include <set>

namespace quillet::sim::SimulatorCommandLine {

namespace {

enum class Takes { nothing, file, optionalFile, model, version };
// --help goes with anything: it is answered before the rest is looked at.
enum class Mode { recording, scenario, any };

struct Option {
    std::string_view name;
    Takes takes;
    Mode mode;
};

constexpr std::string_view kWindows = "--windows";
constexpr std::string_view kMacOS = "--macos";

// --dump-raw takes an optional file, as the app writes to the home directory without one.
constexpr std::array<Option, 12> kOptions{{
    {kWindows, Takes::file, Mode::recording},
    {CommandLine::kListItems, Takes::nothing, Mode::recording},
    {CommandLine::kRaw, Takes::nothing, Mode::recording},
    {CommandLine::kDumpRaw, Takes::optionalFile, Mode::recording},
    {"--scenario", Takes::file, Mode::scenario},
    {"--settings", Takes::file, Mode::scenario},
    {CommandLine::kNavSelfTest, Takes::nothing, Mode::scenario},
    {CommandLine::kOpenSettings, Takes::nothing, Mode::scenario},
    {"--drop-model", Takes::model, Mode::scenario},
    {kMacOS, Takes::version, Mode::scenario},
    {"--stats", Takes::nothing, Mode::scenario},
    {"--help", Takes::nothing, Mode::any},
}};

// The app reads every --tab=PANE and the first one wins, so it may stand more than once.
const Option kTabOption{CommandLine::kTab, Takes::nothing, Mode::scenario};

const Option* find(std::string_view name) {
    auto found = std::find_if(kOptions.begin(), kOptions.end(),
                              [&](const Option& option) { return option.name == name; });
    return found == kOptions.end() ? nullptr : &*found;
}

bool isOption(const std::string& argument) {
    return argument.starts_with("--");
}

// A macOS major version written in decimal digits only.
std::optional<int> majorVersion(const std::string& text) {
    if (text.empty() || text.size() > 2 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const int major = std::stoi(text);
    return SimulatedProcess::isMacOSVersion(major) ? std::optional(major) : std::nullopt;
}

} // namespace

std::optional<std::string> problem(const std::vector<std::string>& arguments) {
    std::set<std::string_view> given;
    const Option* recordingOption = nullptr;
    const Option* scenarioOption = nullptr;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        if (arguments[i].starts_with(CommandLine::kTab)) {
            scenarioOption = &kTabOption;
            continue;
        }
        const Option* option = find(arguments[i]);
        if (!option) {
            return (isOption(arguments[i]) ? "unknown option " : "unexpected argument ") +
                   arguments[i];
        }
        if (!given.insert(option->name).second) {
            return std::string(option->name) + " is given twice";
        }
        const bool hasValue = i + 1 < arguments.size() && !isOption(arguments[i + 1]);
        if (option->takes == Takes::file && !hasValue) {
            return std::string(option->name) + " needs a file name";
        }
        if (option->takes == Takes::model && !hasValue) {
            return std::string(option->name) + " needs a model's name (see --help)";
        }
        if (option->takes == Takes::version && !(hasValue && majorVersion(arguments[i + 1]))) {
            return std::string(option->name) + " needs a major version such as 26 or 27";
        }
        i += option->takes != Takes::nothing && hasValue ? 1 : 0;
        if (option->mode != Mode::any) {
            (option->mode == Mode::recording ? recordingOption : scenarioOption) = option;
        }
    }
    if (recordingOption && !given.contains(kWindows)) {
        return std::string(recordingOption->name) + " needs --windows FILE";
    }
    if (recordingOption && scenarioOption) {
        return std::string(scenarioOption->name) + " cannot be used with --windows";
    }
    return std::nullopt;
}

std::optional<std::string> value(const std::vector<std::string>& arguments,
                                 std::string_view option) {
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == option && !isOption(arguments[i + 1])) {
            return arguments[i + 1];
        }
    }
    return std::nullopt;
}

std::optional<int> macOS(const std::vector<std::string>& arguments) {
    auto given = value(arguments, kMacOS);
    return given ? majorVersion(*given) : std::nullopt;
}

} // namespace quillet::sim::SimulatorCommandLine
