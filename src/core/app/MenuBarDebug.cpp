#include "core/app/MenuBarDebug.hpp"

#include "core/app/BundleIdentity.hpp"
#include "core/app/CommandLine.hpp"
#include "core/app/ListingJson.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/LogSink.hpp"
#include "core/ports/ProcessContext.hpp"
#include "core/ports/ScreenCapture.hpp"

#include <algorithm>

namespace quillet {

namespace {

using nlohmann::ordered_json;
using namespace ListingJson;

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
    return written([&](ordered_json& document) { addItems(document, items, listingItem); },
                   /*sortKeys=*/true);
}

std::optional<std::string> MenuBarDebug::rawDocument(const RawSnapshot& snapshot) {
    return written(
        [&](ordered_json& document) {
            document["rawCount"] = snapshot.items.size();
            document["withWindowName"] =
                std::count_if(snapshot.items.begin(), snapshot.items.end(),
                              [](const MenuBarItem& item) { return item.windowName.has_value(); });
            addRawMembers(document, snapshot, belongsToThisApplication, ownItem, rawItem);
        },
        /*sortKeys=*/false);
}

void MenuBarDebug::printItemsAndExit() {
    if (onHostedBar()) {
        printHostedItems();
        return;
    }
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
    std::optional<std::string> document;
    if (onHostedBar()) {
        document = hostedRawDump();
    } else {
        RawSnapshot snapshot;
        snapshot.items = enumerator_.rawItems(process_.processIdentifier());
        snapshot.displays = enumerator_.activeDisplayBounds();
        snapshot.screenRecording = screenCapture_.preflight();
        snapshot.accessibility = accessibility_.isTrusted(/*prompt=*/false);
        document = rawDocument(snapshot);
    }
    std::optional<std::string> failure =
        document ? process_.writeFile(path, *document)
                 : std::optional<std::string>("a coordinate is too large to write");
    if (failure) {
        log_.log("Quillet: --dump-raw failed to write " + path + ": " + *failure);
    }
}

} // namespace quillet
