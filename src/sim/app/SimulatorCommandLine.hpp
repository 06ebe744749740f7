#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::sim {

// quillet-sim's own command line: which options it takes, and whether a given one makes sense,
// so that a mistyped run says what is wrong in one line instead of playing something else.
namespace SimulatorCommandLine {

// What is wrong with `arguments` (the program path first), as one line without the program's
// name; nothing when they can be run. Checks that every option is known and given once, that
// options that need a file name have one, and that the options of a recording replay and of a
// scenario are not mixed.
std::optional<std::string> problem(const std::vector<std::string>& arguments);

// The value given after `option`, if the option is given with one.
std::optional<std::string> value(const std::vector<std::string>& arguments,
                                 std::string_view option);

// The macOS major version given with --macos, if it is one.
std::optional<int> macOS(const std::vector<std::string>& arguments);

} // namespace SimulatorCommandLine

} // namespace quillet::sim
