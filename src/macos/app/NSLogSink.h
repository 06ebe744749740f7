#pragma once

#include "core/ports/LogSink.hpp"

namespace quillet::macos {

// The system log (NSLog), one message per line.
class NSLogSink final : public LogSink {
public:
    void log(std::string_view line) override;
};

} // namespace quillet::macos
