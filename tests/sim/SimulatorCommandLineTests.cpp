#include "sim/app/SimulatorCommandLine.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet {
namespace {

using sim::SimulatorCommandLine::problem;

std::vector<std::string> commandLine(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "quillet-sim");
    return arguments;
}

TEST(SimulatorCommandLine, SaysInOneLineWhatIsWrong) {
    const std::pair<std::vector<std::string>, std::string> wrong[] = {
        {{"--scenario"}, "--scenario needs a file name"},
        {{"--settings", "--nav-selftest"}, "--settings needs a file name"},
        {{"--windows"}, "--windows needs a file name"},
        {{"--scenarios", "a.json"}, "unknown option --scenarios"},
        {{"--list-items=yes"}, "unknown option --list-items=yes"},
        {{"a.json"}, "unexpected argument a.json"},
        {{"--scenario", "a.json", "--scenario", "b.json"}, "--scenario is given twice"},
        {{"--list-items"}, "--list-items needs --windows FILE"},
        {{"--windows", "w.json", "--list-items", "--settings", "s.json"},
         "--settings cannot be used with --windows"},
        {{"--windows", "w.json", "--list-items", "--tab=items"},
         "--tab= cannot be used with --windows"},
        {{"--macos"}, "--macos needs a major version such as 26 or 27"},
        {{"--macos", "12"}, "--macos needs a major version such as 26 or 27"},
        {{"--macos", "27.1"}, "--macos needs a major version such as 26 or 27"},
        {{"--windows", "w.json", "--list-items", "--macos", "27"},
         "--macos cannot be used with --windows"},
    };
    for (const auto& [arguments, expected] : wrong) {
        EXPECT_EQ(problem(commandLine(arguments)), expected) << expected;
    }
}

TEST(SimulatorCommandLine, TakesEveryWayItIsDocumentedToRun) {
    const std::vector<std::string> right[] = {
        {},
        {"--scenario", "a.json", "--settings", "s.json"},
        {"--settings", "s.json", "--nav-selftest"},
        {"--windows", "w.json", "--list-items", "--raw"},
        {"--windows", "w.json", "--dump-raw", "out.json"},
        {"--dump-raw", "--windows", "w.json"}, // the home folder, as the app writes it
        {"--open-settings", "--tab=items", "--tab=general", "--scenario", "a.json"},
        {"--macos", "27", "--nav-selftest", "--drop-model", "liveByPointer"},
    };
    for (const auto& arguments : right) {
        EXPECT_EQ(problem(commandLine(arguments)), std::nullopt)
            << ::testing::PrintToString(arguments);
    }
    EXPECT_EQ(sim::SimulatorCommandLine::value(commandLine({"--dump-raw", "--windows", "w.json"}),
                                               "--dump-raw"),
              std::nullopt);
}

} // namespace
} // namespace quillet
