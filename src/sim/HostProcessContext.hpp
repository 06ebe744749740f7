#pragma once

#include "core/ports/ProcessContext.hpp"

#include <string>
#include <vector>

namespace quillet::sim {

// The process context of a command-line tool on the host: real standard output and files, with
// the process identifier and macOS version of the simulated Mac.
class HostProcessContext : public ProcessContext {
public:
    HostProcessContext(std::vector<std::string> arguments, Pid pid, int osMajorVersion)
        : arguments_(std::move(arguments)), pid_(pid), osMajorVersion_(osMajorVersion) {}

    const std::vector<std::string>& arguments() const override { return arguments_; }
    Pid processIdentifier() const override { return pid_; }
    std::string homeDirectory() const override;
    int operatingSystemMajorVersion() const override { return osMajorVersion_; }
    void writeStandardOutput(std::string_view text) override;
    std::optional<std::string> writeFile(const std::string& path, std::string_view bytes) override;

private:
    std::vector<std::string> arguments_;
    Pid pid_;
    int osMajorVersion_;
};

} // namespace quillet::sim
