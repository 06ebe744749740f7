#include "core/app/ListingJson.hpp"

#include <cmath>

namespace quillet::ListingJson {

using nlohmann::ordered_json;

std::int64_t rounded(double value) {
    const double whole = std::round(value);
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (!(whole >= -kLimit && whole < kLimit)) {
        throw CoordinateOutOfRange{};
    }
    return static_cast<std::int64_t>(whole);
}

ordered_json optionalString(const std::optional<std::string>& text) {
    return text ? ordered_json(*text) : ordered_json(nullptr);
}

void addFrame(ordered_json& object, const std::optional<Rect>& frame, bool withHeight) {
    object["x"] = frame ? ordered_json(rounded(frame->minX())) : ordered_json(nullptr);
    object["y"] = frame ? ordered_json(rounded(frame->minY())) : ordered_json(nullptr);
    object["w"] = frame ? ordered_json(rounded(frame->width())) : ordered_json(nullptr);
    if (withHeight) {
        object["h"] = frame ? ordered_json(rounded(frame->height())) : ordered_json(nullptr);
    }
}

} // namespace quillet::ListingJson
