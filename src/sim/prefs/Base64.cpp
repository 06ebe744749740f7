#include "sim/prefs/Base64.hpp"

#include <algorithm>
#include <cstdint>

namespace quillet::sim {

namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

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

} // namespace quillet::sim
