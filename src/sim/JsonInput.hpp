#pragma once

#include "core/support/BoundedJson.hpp"
#include "sim/SimulatedProcess.hpp"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace quillet::sim {

// A hand-written or recorded JSON input of the simulator that cannot be used; the message is the
// one line its reader reports.
struct Malformed {
    std::string message;
};

// The outcome of reading such an input: the value, or the one-line reason there is none.
template <class T> struct ParseResult {
    std::optional<T> value;
    std::string error;
};

// Parses `text` as bounded JSON and hands the document to `read`, which throws Malformed for
// what it cannot use; `what` names the input in the message for text that is not JSON at all, or
// too deep or too large to be read.
template <class T, class Read>
ParseResult<T> readJsonInput(std::string_view text, std::string_view what, Read read) {
    BoundedJson parsed = parseBoundedJson(text);
    if (!parsed.document) {
        return {std::nullopt, "the " + std::string(what) + " " + parsed.problem};
    }
    try {
        return {read(*parsed.document), ""};
    } catch (const Malformed& malformed) {
        return {std::nullopt, malformed.message};
    }
}

// The member "macOS" of an input, a major version Quillet runs on; nullopt when it is absent.
inline std::optional<int> readMacOSVersion(const nlohmann::json& document) {
    auto version = document.find("macOS");
    if (version == document.end()) {
        return std::nullopt;
    }
    if (!version->is_number_integer() ||
        !SimulatedProcess::isMacOSVersion(version->get<std::int64_t>())) {
        throw Malformed{"\"macOS\" must be a major version such as 26 or 27"};
    }
    return version->get<int>();
}

} // namespace quillet::sim
