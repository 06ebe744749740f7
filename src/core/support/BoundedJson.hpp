#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Every JSON text Quillet reads (stored rules and profiles, and the simulator's recordings,
// scenarios and settings file) goes through here. nlohmann's copy, comparison and writing recurse
// once per level of nesting, and so does everything that walks a document; a text nested a few
// thousand deep would overflow the stack in any of them. So no value nested deeper than
// kJsonDepthLimit is ever built, and texts beyond kJsonSizeLimit are not parsed at all. Nothing
// Quillet itself writes comes near either limit.
inline constexpr std::size_t kJsonDepthLimit = 32;
inline constexpr std::size_t kJsonSizeLimit = 8 * 1024 * 1024;

// A parsed document, or the reason there is none as the end of a sentence about the input
// ("is not valid JSON", …).
struct BoundedJson {
    std::optional<nlohmann::json> document;
    std::string problem;
};

BoundedJson parseBoundedJson(std::string_view text);

// The reason for a text longer than kJsonSizeLimit, for readers that stop reading a file there.
std::string jsonTooLargeProblem();

} // namespace quillet
