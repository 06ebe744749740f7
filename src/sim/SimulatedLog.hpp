#pragma once

#include "core/ports/LogSink.hpp"

#include <string>
#include <vector>

namespace quillet::sim {

// The simulated Mac's system log: keeps every line, in order, for a test or a scenario to read.
class SimulatedLog : public LogSink {
public:
    void log(std::string_view line) override { lines_.emplace_back(line); }
    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

} // namespace quillet::sim
