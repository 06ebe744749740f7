#include "core/prefs/DefaultsReading.hpp"

#include <cmath>
#include <limits>
#include <type_traits>

namespace quillet::DefaultsReading {

namespace {

bool isWhitespace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The index after leading whitespace and at most one sign; `negative` tells which sign it was.
std::size_t skipWhitespaceAndSign(std::string_view text, bool& negative) {
    std::size_t i = 0;
    while (i < text.size() && isWhitespace(text[i])) {
        ++i;
    }
    negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        ++i;
    }
    return i;
}

std::int64_t truncated(double real) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (std::isnan(real)) {
        return 0;
    }
    // 2^63 is exactly representable; anything at or beyond it saturates.
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (real >= kTwoTo63) {
        return Limits::max();
    }
    if (real < -kTwoTo63) {
        return Limits::min();
    }
    return static_cast<std::int64_t>(real);
}

} // namespace

bool boolean(const StoredValue& value) {
    return std::visit(
        [](const auto& content) -> bool {
            using Kind = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                return content;
            } else if constexpr (std::is_same_v<Kind, std::int64_t> ||
                                 std::is_same_v<Kind, double>) {
                return content != 0;
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return stringBoolValue(content);
            } else {
                return false;
            }
        },
        value.content);
}

std::optional<bool> exactBoolean(const StoredValue& value) {
    return std::visit(
        [](const auto& content) -> std::optional<bool> {
            using Kind = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                return content;
            } else if constexpr (std::is_same_v<Kind, std::int64_t> ||
                                 std::is_same_v<Kind, double>) {
                if (content == 0 || content == 1) {
                    return content == 1;
                }
                return std::nullopt;
            } else {
                return std::nullopt;
            }
        },
        value.content);
}

std::int64_t integer(const StoredValue& value) {
    return std::visit(
        [](const auto& content) -> std::int64_t {
            using Kind = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                return content ? 1 : 0;
            } else if constexpr (std::is_same_v<Kind, std::int64_t>) {
                return content;
            } else if constexpr (std::is_same_v<Kind, double>) {
                return truncated(content);
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return stringIntegerValue(content);
            } else {
                return 0;
            }
        },
        value.content);
}

std::optional<std::string> string(const StoredValue& value) {
    if (const auto* text = std::get_if<std::string>(&value.content)) {
        return *text;
    }
    return std::nullopt;
}

std::optional<Bytes> data(const StoredValue& value) {
    if (const auto* bytes = std::get_if<Bytes>(&value.content)) {
        return *bytes;
    }
    return std::nullopt;
}

bool stringBoolValue(std::string_view text) {
    bool negative = false;
    std::size_t i = skipWhitespaceAndSign(text, negative);
    while (i < text.size() && text[i] == '0') {
        ++i;
    }
    if (i == text.size()) {
        return false;
    }
    const char c = text[i];
    return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
}

std::int64_t stringIntegerValue(std::string_view text) {
    using Limits = std::numeric_limits<std::int64_t>;
    bool negative = false;
    std::size_t i = skipWhitespaceAndSign(text, negative);
    // Accumulated as a negative number, whose range is the larger one.
    std::int64_t result = 0;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        const int digit = text[i] - '0';
        if (result < (Limits::min() + digit) / 10) {
            return negative ? Limits::min() : Limits::max();
        }
        result = result * 10 - digit;
    }
    if (negative) {
        return result;
    }
    return result == Limits::min() ? Limits::max() : -result;
}

} // namespace quillet::DefaultsReading
