#include "sim/BoundedFile.hpp"

#include "core/support/BoundedJson.hpp"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

namespace quillet::sim {

namespace fs = std::filesystem;

BoundedFile readBoundedFile(const fs::path& path) {
    auto unreadable = [](std::string problem) {
        return BoundedFile{true, std::nullopt, std::move(problem)};
    };
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return {false, std::nullopt, "does not exist"};
    }
    if (error) {
        return unreadable("cannot be read: " + error.message());
    }
    if (!fs::is_regular_file(status)) {
        return unreadable("is not a regular file");
    }
    std::ifstream input(path, std::ios::binary);
    if (!input) {
        return unreadable(std::string("cannot be read: ") + std::strerror(errno));
    }
    std::string text;
    char chunk[64 * 1024];
    while (input.read(chunk, sizeof chunk) || input.gcount() > 0) {
        text.append(chunk, static_cast<std::size_t>(input.gcount()));
        if (text.size() > kJsonSizeLimit) {
            return unreadable(jsonTooLargeProblem());
        }
    }
    if (input.bad()) {
        return unreadable(std::string("cannot be read: ") + std::strerror(errno));
    }
    return {true, std::move(text), ""};
}

} // namespace quillet::sim
