#include "core/app/MenuBarDebug.hpp"

#include "core/app/BundleIdentity.hpp"
#include "core/app/CommandLine.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/LogSink.hpp"
#include "core/ports/ProcessContext.hpp"
#include "core/ports/ScreenCapture.hpp"
#include "core/support/AppleJson.hpp"

#include <algorithm>
#include <cmath>

namespace quillet {

namespace {

using nlohmann::ordered_json;

// A coordinate that no 64-bit integer can hold; the document cannot be written.
struct CoordinateOutOfRange {};

// Rounded to the nearest whole number, halves away from zero.
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

// "x", "y", "w" (and "h" when asked) of a rectangle.
void addFrame(ordered_json& object, const Rect& frame, bool withHeight) {
    object["x"] = rounded(frame.minX());
    object["y"] = rounded(frame.minY());
    object["w"] = rounded(frame.width());
    if (withHeight) {
        object["h"] = rounded(frame.height());
    }
}

ordered_json listingItem(const MenuBarItem& item) {
    ordered_json object;
    object["windowID"] = item.windowID;
    addFrame(object, item.frame, true);
    object["layer"] = item.layer;
    object["ownerPID"] = item.ownerPID;
    object["ownerName"] = item.ownerName;
    object["windowName"] = optionalString(item.windowName);
    object["bundleID"] = optionalString(item.bundleID);
    object["label"] = item.displayLabel;
    object["mine"] = item.isOwnControlItem;
    return object;
}

ordered_json rawItem(const MenuBarItem& item) {
    ordered_json object;
    addFrame(object, item.frame, false);
    object["ownerName"] = item.ownerName;
    object["windowName"] = optionalString(item.windowName);
    object["bundleID"] = optionalString(item.bundleID);
    return object;
}

ordered_json ownItem(const MenuBarItem& item) {
    ordered_json object;
    addFrame(object, item.frame, false);
    object["name"] = item.windowName.value_or("");
    return object;
}

bool belongsToThisApplication(const MenuBarItem& item) {
    return (item.windowName && (item.windowName->starts_with(kOwnNamePrefix) ||
                                *item.windowName == kBundleIdentifier)) ||
           item.bundleID == kBundleIdentifier;
}

} // namespace

std::optional<std::string> MenuBarDebug::listingDocument(const std::vector<MenuBarItem>& items) {
    try {
        ordered_json document;
        document["count"] = items.size();
        document["items"] = ordered_json::array();
        for (const MenuBarItem& item : items) {
            document["items"].push_back(listingItem(item));
        }
        return appleStylePrettyJSON(document, /*sortKeys=*/true);
    } catch (const CoordinateOutOfRange&) {
        return std::nullopt;
    }
}

std::optional<std::string> MenuBarDebug::rawDocument(const RawSnapshot& snapshot) {
    try {
        ordered_json document;
        document["rawCount"] = snapshot.items.size();
        document["withWindowName"] =
            std::count_if(snapshot.items.begin(), snapshot.items.end(),
                          [](const MenuBarItem& item) { return item.windowName.has_value(); });
        document["screenRecording"] = snapshot.screenRecording;
        document["accessibility"] = snapshot.accessibility;
        document["displays"] = ordered_json::array();
        for (const Rect& display : snapshot.displays) {
            ordered_json object;
            addFrame(object, display, true);
            document["displays"].push_back(std::move(object));
        }
        document["ourItems"] = ordered_json::array();
        document["items"] = ordered_json::array();
        for (const MenuBarItem& item : snapshot.items) {
            if (belongsToThisApplication(item)) {
                document["ourItems"].push_back(ownItem(item));
            }
            document["items"].push_back(rawItem(item));
        }
        return appleStylePrettyJSON(document, /*sortKeys=*/false);
    } catch (const CoordinateOutOfRange&) {
        return std::nullopt;
    }
}

void MenuBarDebug::printItemsAndExit() {
    const Pid ownPID = process_.processIdentifier();
    const auto items = CommandLine::hasFlag(process_.arguments(), CommandLine::kRaw)
                           ? enumerator_.mainDisplayItems(ownPID)
                           : enumerator_.logicalItems(ownPID);
    auto document = listingDocument(items);
    if (!document) {
        log_.log("Quillet: --list-items JSON serialization failed");
        return;
    }
    process_.writeStandardOutput(*document + "\n");
}

void MenuBarDebug::dumpRaw(const std::string& path) {
    RawSnapshot snapshot;
    snapshot.items = enumerator_.rawItems(process_.processIdentifier());
    snapshot.displays = enumerator_.activeDisplayBounds();
    snapshot.screenRecording = screenCapture_.preflight();
    snapshot.accessibility = accessibility_.isTrusted(/*prompt=*/false);
    auto document = rawDocument(snapshot);
    std::optional<std::string> failure =
        document ? process_.writeFile(path, *document)
                 : std::optional<std::string>("a coordinate is too large to write");
    if (failure) {
        log_.log("Quillet: --dump-raw failed to write " + path + ": " + *failure);
    }
}

} // namespace quillet
