#include "core/menubar/WindowValueReading.hpp"

#include <cmath>
#include <limits>

namespace quillet {

namespace {

std::optional<double> readNumber(const WindowValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value.content)) {
        return static_cast<double>(*integer);
    }
    if (const auto* real = std::get_if<double>(&value.content)) {
        return *real;
    }
    return std::nullopt;
}

template <typename Integer> std::optional<Integer> readIntegerOf(const WindowValue& value) {
    auto integer = readInteger(value);
    if (!integer || *integer < std::numeric_limits<Integer>::min() ||
        *integer > std::numeric_limits<Integer>::max()) {
        return std::nullopt;
    }
    return static_cast<Integer>(*integer);
}

const WindowValue* member(const WindowValue::Dictionary& dictionary, std::string_view key) {
    for (const auto& [name, value] : dictionary) {
        if (name == key) {
            return &value;
        }
    }
    return nullptr;
}

} // namespace

std::optional<std::int64_t> readInteger(const WindowValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value.content)) {
        return *integer;
    }
    // A floating-point number counts only when it is exactly a whole number in range.
    const auto* real = std::get_if<double>(&value.content);
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (!real || !std::isfinite(*real) || std::trunc(*real) != *real || *real < -kLimit ||
        *real >= kLimit) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*real);
}

std::optional<std::int32_t> readInt32(const WindowValue& value) {
    return readIntegerOf<std::int32_t>(value);
}

std::optional<std::uint32_t> readUInt32(const WindowValue& value) {
    return readIntegerOf<std::uint32_t>(value);
}

std::optional<std::string> readString(const WindowValue& value) {
    if (const auto* text = std::get_if<std::string>(&value.content)) {
        return *text;
    }
    return std::nullopt;
}

std::optional<Rect> readRect(const WindowValue& value) {
    const auto* dictionary = std::get_if<WindowValue::Dictionary>(&value.content);
    if (!dictionary) {
        return std::nullopt;
    }
    std::optional<double> fields[4];
    const char* names[4] = {"X", "Y", "Width", "Height"};
    for (int i = 0; i < 4; ++i) {
        const WindowValue* field = member(*dictionary, names[i]);
        fields[i] = field ? readNumber(*field) : std::nullopt;
        if (!fields[i]) {
            return std::nullopt;
        }
    }
    Rect rect = makeRect(*fields[0], *fields[1], *fields[2], *fields[3]);
    if (rect.size.width < 0) {
        rect.origin.x += rect.size.width;
        rect.size.width = -rect.size.width;
    }
    if (rect.size.height < 0) {
        rect.origin.y += rect.size.height;
        rect.size.height = -rect.size.height;
    }
    return rect;
}

} // namespace quillet
