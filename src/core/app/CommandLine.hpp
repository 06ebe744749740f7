#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillet {

class MenuBarDebug;
class ProcessContext;

// The process's three lives, chosen from the command line before anything else runs.
enum class LaunchMode { listItems, dumpRaw, agent };

namespace CommandLine {

inline constexpr std::string_view kListItems = "--list-items";
inline constexpr std::string_view kDumpRaw = "--dump-raw";
inline constexpr std::string_view kRaw = "--raw";
inline constexpr std::string_view kOpenSettings = "--open-settings";
inline constexpr std::string_view kTab = "--tab=";
inline constexpr std::string_view kNavSelfTest = "--nav-selftest";
inline constexpr std::string_view kRawDumpFileName = "/quillet-raw.json";

// Whole-element equality against every argument, the program path included.
bool hasFlag(const std::vector<std::string>& arguments, std::string_view flag);

// "--list-items" wins over "--dump-raw"; anything else starts the resident agent.
LaunchMode launchMode(const std::vector<std::string>& arguments);

// Runs a diagnostic mode to completion; the caller then exits with status 0. Returns false for
// the agent, which the caller starts instead.
bool runDiagnosticMode(LaunchMode mode, MenuBarDebug& debug, const ProcessContext& process);

} // namespace CommandLine

} // namespace quillet
