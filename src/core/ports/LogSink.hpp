#pragma once

#include <string_view>

namespace quillet {

// The system log: one line per message (NSLog on a Mac, standard error elsewhere).
class LogSink {
public:
    virtual ~LogSink() = default;
    virtual void log(std::string_view line) = 0;
};

} // namespace quillet
