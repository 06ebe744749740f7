#pragma once

#include "core/ports/ProcessContext.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quillet::sim {

// A process on the simulated Mac: standard output and the files it writes are kept in memory;
// a directory can be made unwritable to see how failures are handled.
class SimulatedProcess : public ProcessContext {
public:
    SimulatedProcess(std::vector<std::string> arguments, Pid pid, std::string home = "/Users/me")
        : arguments_(std::move(arguments)), pid_(pid), home_(std::move(home)) {}

    void makeUnwritable(std::string directory) { unwritable_.insert(std::move(directory)); }
    // The macOS it runs on; 26 unless set.
    void setOperatingSystemMajorVersion(int major) { osMajorVersion_ = major; }
    // A major version Quillet can run on: macOS 13 (Ventura) and later.
    static bool isMacOSVersion(std::int64_t major) { return major >= 13 && major <= 99; }
    const std::string& standardOutput() const { return standardOutput_; }
    const std::map<std::string, std::string>& files() const { return files_; }

    const std::vector<std::string>& arguments() const override { return arguments_; }
    Pid processIdentifier() const override { return pid_; }
    std::string homeDirectory() const override { return home_; }
    int operatingSystemMajorVersion() const override { return osMajorVersion_; }
    void writeStandardOutput(std::string_view text) override { standardOutput_ += text; }
    std::optional<std::string> writeFile(const std::string& path, std::string_view bytes) override;

private:
    std::vector<std::string> arguments_;
    Pid pid_;
    std::string home_;
    int osMajorVersion_ = 26;
    std::set<std::string> unwritable_;
    std::string standardOutput_;
    std::map<std::string, std::string> files_;
};

} // namespace quillet::sim
