#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quillet::sim {

// A JSON input of the simulator read from a file, never further than a document Quillet would
// parse (so that a huge file, or a device that never ends, costs nothing).
struct BoundedFile {
    bool exists = false;
    std::optional<std::string> text;
    // Why there is no text, as the end of a sentence about the file ("does not exist", …).
    std::string problem;
};

BoundedFile readBoundedFile(const std::filesystem::path& path);

} // namespace quillet::sim
