#pragma once

#include "core/ports/ProcessContext.hpp"

#include <string>
#include <vector>

namespace quillet::sim {

// The process context of a command-line tool on the host: real standard output and files, with
// the process identifier that the simulated Mac assigns to Quillet.
class HostProcessContext : public ProcessContext {
public:
    HostProcessContext(std::vector<std::string> arguments, Pid pid)
        : arguments_(std::move(arguments)), pid_(pid) {}

    const std::vector<std::string>& arguments() const override { return arguments_; }
    Pid processIdentifier() const override { return pid_; }
    std::string homeDirectory() const override;
    void writeStandardOutput(std::string_view text) override;
    std::optional<std::string> writeFile(const std::string& path, std::string_view bytes) override;

private:
    std::vector<std::string> arguments_;
    Pid pid_;
};

} // namespace quillet::sim
