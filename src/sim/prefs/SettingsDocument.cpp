#include "sim/prefs/SettingsDocument.hpp"

#include "core/support/BoundedJson.hpp"

#include <algorithm>

namespace quillet::sim {

namespace {

using nlohmann::json;

bool isWhitespace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::size_t skipWhitespace(std::string_view text, std::size_t i) {
    while (i < text.size() && isWhitespace(text[i])) {
        ++i;
    }
    return i;
}

// `i` is at the opening quote of a string; the index after its closing quote.
std::size_t afterString(std::string_view text, std::size_t i) {
    for (++i; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\') {
            ++i;
        }
    }
    return i + 1;
}

// `i` is at the start of a value; the index after its last character. Nesting is counted, not
// followed, so the walk is flat however deep the value.
std::size_t afterValue(std::string_view text, std::size_t i) {
    std::size_t depth = 0;
    std::size_t end = i;
    while (i < text.size()) {
        const char c = text[i];
        if (depth == 0 && (c == ',' || c == '}')) {
            break;
        }
        if (c == '"') {
            i = afterString(text, i);
            end = i;
            continue;
        }
        if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
        }
        if (!isWhitespace(c)) {
            end = i + 1;
        }
        ++i;
    }
    return end;
}

// The members of `text`, which must already be known to be one valid JSON object.
std::vector<std::pair<std::string, std::string>> membersOf(std::string_view text) {
    std::vector<std::pair<std::string, std::string>> members;
    std::size_t i = text.find('{') + 1; // only whitespace or a byte order mark comes before
    while (true) {
        i = skipWhitespace(text, i);
        if (i >= text.size() || text[i] == '}') {
            return members;
        }
        if (text[i] == ',') {
            ++i;
            continue;
        }
        const std::size_t keyEnd = afterString(text, i);
        const json key = json::parse(text.substr(i, keyEnd - i), nullptr, false);
        i = skipWhitespace(text, skipWhitespace(text, keyEnd) + 1); // past the ':'
        const std::size_t valueEnd = afterValue(text, i);
        members.emplace_back(key.is_string() ? key.get<std::string>() : std::string(),
                             std::string(text.substr(i, valueEnd - i)));
        i = valueEnd;
    }
}

// Written the way `dump(2)` writes a member of the whole object.
std::string memberText(const json& value) {
    std::string text = value.dump(2);
    std::string indented;
    for (const char c : text) {
        indented += c;
        if (c == '\n') {
            indented += "  ";
        }
    }
    return indented;
}

} // namespace

ParsedSettings SettingsDocument::parse(std::string_view text) {
    BoundedJson parsed = parseBoundedJson(text);
    if (!parsed.document) {
        return {std::nullopt, parsed.problem};
    }
    if (!parsed.document->is_object()) {
        return {std::nullopt, "is not a JSON object"};
    }
    SettingsDocument document;
    // A key given twice holds its last value, as the parser reads it.
    for (auto& [key, value] : membersOf(text)) {
        document.setText(std::move(key), std::move(value));
    }
    return {std::move(document), ""};
}

std::optional<json> SettingsDocument::value(const std::string& key) const {
    auto found = std::find_if(members_.begin(), members_.end(),
                              [&](const auto& member) { return member.first == key; });
    if (found == members_.end()) {
        return std::nullopt;
    }
    return parseBoundedJson(found->second).document;
}

bool SettingsDocument::set(const std::string& key, const json& value) {
    try {
        json(key).dump();
        setText(key, memberText(value));
        return true;
    } catch (const json::exception&) {
        return false;
    }
}

std::string SettingsDocument::text() const {
    if (members_.empty()) {
        return "{}\n";
    }
    std::string text = "{\n";
    for (std::size_t i = 0; i < members_.size(); ++i) {
        text += "  " + json(members_[i].first).dump() + ": " + members_[i].second;
        text += i + 1 < members_.size() ? ",\n" : "\n";
    }
    return text + "}\n";
}

void SettingsDocument::setText(std::string key, std::string valueText) {
    auto found = std::find_if(members_.begin(), members_.end(),
                              [&](const auto& member) { return member.first == key; });
    if (found == members_.end()) {
        members_.emplace_back(std::move(key), std::move(valueText));
    } else {
        found->second = std::move(valueText);
    }
}

} // namespace quillet::sim
