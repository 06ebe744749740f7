#pragma once

#include "core/ports/ProcessContext.hpp"

namespace quillet::macos {

// This process as Foundation describes it (NSProcessInfo, NSHomeDirectory), with standard output
// and files.
class AppKitProcessContext final : public ProcessContext {
public:
    // Reads the argument list once; it does not change during the life of the process.
    AppKitProcessContext();

    const std::vector<std::string>& arguments() const override { return arguments_; }
    Pid processIdentifier() const override;
    std::string homeDirectory() const override;
    int operatingSystemMajorVersion() const override;

    void writeStandardOutput(std::string_view text) override;
    std::optional<std::string> writeFile(const std::string& path, std::string_view bytes) override;

private:
    std::vector<std::string> arguments_;
};

} // namespace quillet::macos
