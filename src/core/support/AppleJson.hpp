#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace quillet {

// JSON text laid out as Foundation's JSONSerialization writes it with the pretty-printed option
// ("key" : value, two-space indent, slashes escaped), so that the documents Quillet prints read
// the same on every platform. Object members keep their order unless `sortKeys` is set.
std::string appleStylePrettyJSON(const nlohmann::ordered_json& value, bool sortKeys);

} // namespace quillet
