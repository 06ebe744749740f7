#pragma once

#include "core/ports/Geometry.hpp"

#include "core/support/AppleJson.hpp"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillet::ListingJson {

// The pieces the diagnostic documents are written from.

// A coordinate that no 64-bit integer can hold; the document cannot be written.
struct CoordinateOutOfRange {};

// Rounded to the nearest whole number, halves away from zero; throws CoordinateOutOfRange.
std::int64_t rounded(double value);

nlohmann::ordered_json optionalString(const std::optional<std::string>& text);

// "x", "y", "w" (and "h" when asked) of a rectangle; all null when there is none.
void addFrame(nlohmann::ordered_json& object, const std::optional<Rect>& frame, bool withHeight);

// The document `build` fills in, pretty-printed; nullopt when a coordinate does not fit.
template <class Build> std::optional<std::string> written(Build build, bool sortKeys) {
    try {
        nlohmann::ordered_json document;
        build(document);
        return appleStylePrettyJSON(document, sortKeys);
    } catch (const CoordinateOutOfRange&) {
        return std::nullopt;
    }
}

// "count" and "items": one object per item, in order.
template <class Item, class Describe>
void addItems(nlohmann::ordered_json& document, const std::vector<Item>& items, Describe describe) {
    document["count"] = items.size();
    document["items"] = nlohmann::ordered_json::array();
    for (const Item& item : items) {
        document["items"].push_back(describe(item));
    }
}

// What the raw dump says after its counts: the permissions, the displays, our own items (those
// `isOwn` picks, as `own` describes them) and every item (as `raw` describes it).
template <class Snapshot, class IsOwn, class Own, class Raw>
void addRawMembers(nlohmann::ordered_json& document, const Snapshot& snapshot, IsOwn isOwn, Own own,
                   Raw raw) {
    document["screenRecording"] = snapshot.screenRecording;
    document["accessibility"] = snapshot.accessibility;
    document["displays"] = nlohmann::ordered_json::array();
    for (const Rect& display : snapshot.displays) {
        nlohmann::ordered_json object;
        addFrame(object, display, true);
        document["displays"].push_back(std::move(object));
    }
    document["ourItems"] = nlohmann::ordered_json::array();
    document["items"] = nlohmann::ordered_json::array();
    for (const auto& item : snapshot.items) {
        if (isOwn(item)) {
            document["ourItems"].push_back(own(item));
        }
        document["items"].push_back(raw(item));
    }
}

} // namespace quillet::ListingJson
