#pragma once

#include "core/ports/LogSink.hpp"

#include <cstdio>
#include <string>

namespace quillet::sim {

// The system log of a process on the host: one line per message on standard error.
class StandardErrorLog : public LogSink {
public:
    void log(std::string_view line) override {
        std::string text(line);
        text += '\n';
        std::fputs(text.c_str(), stderr);
    }
};

} // namespace quillet::sim
