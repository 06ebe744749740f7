#include "core/app/CommandLine.hpp"

#include "core/app/MenuBarDebug.hpp"
#include "core/ports/ProcessContext.hpp"

#include <algorithm>

namespace quillet::CommandLine {

bool hasFlag(const std::vector<std::string>& arguments, std::string_view flag) {
    return std::any_of(arguments.begin(), arguments.end(),
                       [&](const std::string& argument) { return argument == flag; });
}

LaunchMode launchMode(const std::vector<std::string>& arguments) {
    if (hasFlag(arguments, kListItems)) {
        return LaunchMode::listItems;
    }
    if (hasFlag(arguments, kDumpRaw)) {
        return LaunchMode::dumpRaw;
    }
    return LaunchMode::agent;
}

bool runDiagnosticMode(LaunchMode mode, MenuBarDebug& debug, const ProcessContext& process) {
    switch (mode) {
    case LaunchMode::listItems:
        debug.printItemsAndExit();
        return true;
    case LaunchMode::dumpRaw:
        debug.dumpRaw(process.homeDirectory() + std::string(kRawDumpFileName));
        return true;
    case LaunchMode::agent:
        return false;
    }
    return false;
}

} // namespace quillet::CommandLine
