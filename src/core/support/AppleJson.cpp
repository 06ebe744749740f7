#include "core/support/AppleJson.hpp"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace quillet {

namespace {

using nlohmann::ordered_json;

void appendString(const std::string& text, std::string& out) {
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '/':
            out += "\\/";
            break;
        case '\b':
            out += "\\b";
            break;
        case '\f':
            out += "\\f";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
                out += escaped;
            } else {
                out += c;
            }
        }
    }
    out += '"';
}

void appendIndent(int depth, std::string& out) {
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
}

void append(const ordered_json& value, bool sortKeys, int depth, std::string& out);

void appendObject(const ordered_json& object, bool sortKeys, int depth, std::string& out) {
    std::vector<const std::string*> keys;
    for (const auto& member : object.items()) {
        keys.push_back(&member.key());
    }
    if (sortKeys) {
        std::sort(keys.begin(), keys.end(), [](auto* a, auto* b) { return *a < *b; });
    }
    out += "{\n";
    for (std::size_t i = 0; i < keys.size(); ++i) {
        appendIndent(depth + 1, out);
        appendString(*keys[i], out);
        out += " : ";
        append(object.at(*keys[i]), sortKeys, depth + 1, out);
        out += i + 1 < keys.size() ? ",\n" : "\n";
    }
    if (keys.empty()) {
        out += '\n';
    }
    appendIndent(depth, out);
    out += '}';
}

void appendArray(const ordered_json& array, bool sortKeys, int depth, std::string& out) {
    out += "[\n";
    for (std::size_t i = 0; i < array.size(); ++i) {
        appendIndent(depth + 1, out);
        append(array[i], sortKeys, depth + 1, out);
        out += i + 1 < array.size() ? ",\n" : "\n";
    }
    if (array.empty()) {
        out += '\n';
    }
    appendIndent(depth, out);
    out += ']';
}

void append(const ordered_json& value, bool sortKeys, int depth, std::string& out) {
    switch (value.type()) {
    case ordered_json::value_t::object:
        appendObject(value, sortKeys, depth, out);
        break;
    case ordered_json::value_t::array:
        appendArray(value, sortKeys, depth, out);
        break;
    case ordered_json::value_t::string:
        appendString(value.get_ref<const std::string&>(), out);
        break;
    default:
        out += value.dump();
    }
}

} // namespace

std::string appleStylePrettyJSON(const ordered_json& value, bool sortKeys) {
    std::string out;
    append(value, sortKeys, 0, out);
    return out;
}

} // namespace quillet
