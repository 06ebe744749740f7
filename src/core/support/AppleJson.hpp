#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace quillet {

// JSON text laid out as Foundation's JSONSerialization writes it with the pretty-printed option
// ("key" : value, two-space indent, slashes escaped), so that the documents Quillet prints read
// the same on every platform. Object members keep their order unless `sortKeys` is set. It
// recurses once per level, which is fine for the documents Quillet builds itself (a few levels
// deep); never hand it one read from outside.
std::string appleStylePrettyJSON(const nlohmann::ordered_json& value, bool sortKeys);

} // namespace quillet
