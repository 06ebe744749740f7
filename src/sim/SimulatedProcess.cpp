#include "sim/SimulatedProcess.hpp"

namespace quillet::sim {

std::optional<std::string> SimulatedProcess::writeFile(const std::string& path,
                                                       std::string_view bytes) {
    const auto slash = path.find_last_of('/');
    const std::string directory = slash == std::string::npos ? "" : path.substr(0, slash);
    if (unwritable_.contains(directory)) {
        return "You don\u2019t have permission to save the file \u201c" + path.substr(slash + 1) +
               "\u201d in the folder \u201c" + directory.substr(directory.find_last_of('/') + 1) +
               "\u201d.";
    }
    files_[path] = std::string(bytes);
    return std::nullopt;
}

} // namespace quillet::sim
