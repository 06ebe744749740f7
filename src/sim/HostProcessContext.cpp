#include "sim/HostProcessContext.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quillet::sim {

std::string HostProcessContext::homeDirectory() const {
    const char* home = std::getenv("HOME");
    return home ? home : "/";
}

void HostProcessContext::writeStandardOutput(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::optional<std::string> HostProcessContext::writeFile(const std::string& path,
                                                         std::string_view bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) {
        return std::strerror(errno);
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int writeError = errno;
    if (std::fclose(file) != 0 || !written) {
        return std::strerror(written ? errno : writeError);
    }
    return std::nullopt;
}

} // namespace quillet::sim
