#pragma once

#include "core/ports/Geometry.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// The process's own surroundings: its arguments and identity, standard output and files.
class ProcessContext {
public:
    virtual ~ProcessContext() = default;

    // The argument list, the program path included.
    virtual const std::vector<std::string>& arguments() const = 0;
    virtual Pid processIdentifier() const = 0;
    virtual std::string homeDirectory() const = 0;
    // The major version of the running macOS (26, 27, …), as NSProcessInfo reports it to a binary
    // built with the current SDK.
    virtual int operatingSystemMajorVersion() const = 0;

    virtual void writeStandardOutput(std::string_view text) = 0;
    // Replaces the file at `path` (not atomically); on failure, the platform's description of
    // the error.
    virtual std::optional<std::string> writeFile(const std::string& path,
                                                 std::string_view bytes) = 0;
};

} // namespace quillet
