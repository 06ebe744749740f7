#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet::sim {

struct ParsedSettings;

// The settings file's one JSON object, member by member, each value kept as the JSON text it was
// written as. A member Quillet never writes (another tool's, or the user's own) is written back
// exactly as it was read, so that nothing in it is rounded, reordered or reformatted: an integer
// beyond 64 bits stays that integer.
class SettingsDocument {
public:
    static ParsedSettings parse(std::string_view text);

    // The value of `key`, parsed; nothing when there is no such member.
    std::optional<nlohmann::json> value(const std::string& key) const;

    // Replaces the member's value, or appends the member. False, with the document unchanged,
    // when the value holds text that is not UTF-8, which JSON cannot carry.
    bool set(const std::string& key, const nlohmann::json& value);

    // The whole document as the file holds it: one member per line, ending in a line feed.
    std::string text() const;

private:
    void setText(std::string key, std::string valueText);

    std::vector<std::pair<std::string, std::string>> members_; // key, value as JSON text
};

// The document, or the reason there is none as the end of a sentence about the file.
struct ParsedSettings {
    std::optional<SettingsDocument> document;
    std::string problem;
};

} // namespace quillet::sim
