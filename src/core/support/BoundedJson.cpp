#include "core/support/BoundedJson.hpp"

namespace quillet {

using nlohmann::json;

std::string jsonTooLargeProblem() {
    return "is larger than " + std::to_string(kJsonSizeLimit / (1024 * 1024)) + " MB";
}

BoundedJson parseBoundedJson(std::string_view text) {
    if (text.size() > kJsonSizeLimit) {
        return {std::nullopt, jsonTooLargeProblem()};
    }
    // The parser itself keeps its nesting on the heap; the callback refuses to build any array
    // or object at the limit, so the partial document left by a deep text is shallow too.
    bool tooDeep = false;
    const json::parser_callback_t refuseDeepValues = [&tooDeep](int depth,
                                                                json::parse_event_t event, json&) {
        const bool opens =
            event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
        if (opens && static_cast<std::size_t>(depth) >= kJsonDepthLimit) {
            tooDeep = true;
            return false;
        }
        return true;
    };
    json document = json::parse(text, refuseDeepValues, /*allow_exceptions=*/false);
    if (document.is_discarded()) {
        return {std::nullopt, "is not valid JSON"};
    }
    if (tooDeep) {
        return {std::nullopt,
                "is nested deeper than " + std::to_string(kJsonDepthLimit) + " levels"};
    }
    return {std::move(document), ""};
}

} // namespace quillet
