#include "sim/prefs/FileKeyValueStore.hpp"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <system_error>

namespace quillet::sim {

namespace {

using nlohmann::json;

constexpr std::string_view kDataTag = "data";
constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string base64Encoded(const Bytes& bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            group = (group << 8) | (j < count ? bytes[i + j] : 0u);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            text += j <= count ? kAlphabet[(group >> (18 - 6 * j)) & 0x3Fu] : '=';
        }
    }
    return text;
}

// Strict: whole groups of four, only the alphabet, padding only at the very end.
std::optional<Bytes> base64Decoded(std::string_view text) {
    if (text.size() % 4 != 0) {
        return std::nullopt;
    }
    Bytes bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const bool last = i + 4 == text.size();
        std::uint32_t group = 0;
        std::size_t padding = 0;
        for (std::size_t j = 0; j < 4; ++j) {
            const char c = text[i + j];
            if (c == '=' && last && j >= 2 && (j == 3 || text[i + 3] == '=')) {
                ++padding;
                group <<= 6;
                continue;
            }
            const std::size_t index = kAlphabet.find(c);
            if (index == std::string_view::npos || padding > 0) {
                return std::nullopt;
            }
            group = (group << 6) | static_cast<std::uint32_t>(index);
        }
        for (std::size_t j = 0; j < 3 - padding; ++j) {
            bytes.push_back(static_cast<std::uint8_t>(group >> (16 - 8 * j)));
        }
    }
    return bytes;
}

StoredValue storedValue(const json& member) {
    switch (member.type()) {
    case json::value_t::boolean:
        return {member.get<bool>()};
    case json::value_t::number_integer:
        return {member.get<std::int64_t>()};
    case json::value_t::number_unsigned: {
        const auto number = member.get<std::uint64_t>();
        if (number <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
            return {static_cast<std::int64_t>(number)};
        }
        return {static_cast<double>(number)};
    }
    case json::value_t::number_float:
        return {member.get<double>()};
    case json::value_t::string:
        return {member.get<std::string>()};
    case json::value_t::object:
        if (member.size() == 1 && member.contains(kDataTag) && member[kDataTag].is_string()) {
            if (auto bytes = base64Decoded(member[kDataTag].get_ref<const std::string&>())) {
                return {std::move(*bytes)};
            }
        }
        return {};
    default:
        return {};
    }
}

} // namespace

FileKeyValueStore::FileKeyValueStore(std::filesystem::path path, LogSink& log)
    : path_(std::move(path)), log_(log) {
    std::error_code error;
    if (!std::filesystem::exists(path_, error)) {
        return; // A first run: every setting has its default.
    }
    std::ifstream input(path_, std::ios::binary);
    std::stringstream text;
    text << input.rdbuf();
    if (!input) {
        log_.log("quillet-sim: cannot read settings file " + path_.string() +
                 "; using defaults until a setting is written");
        return;
    }
    json document = json::parse(text.str(), nullptr, /*allow_exceptions=*/false);
    if (!document.is_object()) {
        log_.log("quillet-sim: settings file " + path_.string() +
                 " is not a JSON object; using defaults until a setting is written");
        return;
    }
    document_ = std::move(document);
}

StoredValue FileKeyValueStore::value(const std::string& key) const {
    auto found = document_.find(key);
    return found == document_.end() ? StoredValue{} : storedValue(*found);
}

void FileKeyValueStore::setBool(const std::string& key, bool value) {
    write(key, value);
}

void FileKeyValueStore::setInteger(const std::string& key, std::int64_t value) {
    write(key, value);
}

void FileKeyValueStore::setString(const std::string& key, const std::string& value) {
    write(key, value);
}

void FileKeyValueStore::setData(const std::string& key, const Bytes& value) {
    write(key, json{{kDataTag, base64Encoded(value)}});
}

void FileKeyValueStore::write(const std::string& key, json member) {
    std::optional<json> previous;
    if (auto found = document_.find(key); found != document_.end()) {
        previous = *found;
    }
    document_[key] = std::move(member);

    std::string text;
    try {
        text = document_.dump(2) + "\n";
    } catch (const json::exception&) {
        // Only text that is not UTF-8 cannot be written; keep the document writable.
        if (previous) {
            document_[key] = std::move(*previous);
        } else {
            document_.erase(key);
        }
        log_.log("quillet-sim: setting " + key + " is not UTF-8 text; it is not saved");
        return;
    }

    // Written beside the file and renamed over it, so that an interrupted run never leaves half
    // a file behind.
    std::filesystem::path temporary = path_;
    temporary += ".tmp";
    std::ofstream output(temporary, std::ios::binary | std::ios::trunc);
    output << text;
    output.close();
    std::error_code error;
    if (!output) {
        log_.log("quillet-sim: cannot write settings file " + temporary.string() + ": " +
                 std::strerror(errno));
        return;
    }
    std::filesystem::rename(temporary, path_, error);
    if (error) {
        log_.log("quillet-sim: cannot replace settings file " + path_.string() + ": " +
                 error.message());
    }
}

} // namespace quillet::sim
