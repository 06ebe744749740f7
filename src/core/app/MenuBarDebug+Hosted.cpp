// The diagnostic modes on the hosted bar of macOS 27, where no window stands for an item: both
// documents come from the host's accessibility tree, with the members of the window-list ones
// (those only a window has, its number and layer, are 0 and null) and three of their own: the
// item's "identifier", whether it is "inOverflow" (then it has no coordinates), and the index of
// the host "display" window that holds it. Each document says "source": "accessibility".

#include "core/app/CommandLine.hpp"
#include "core/app/ListingJson.hpp"
#include "core/app/MenuBarDebug.hpp"
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

constexpr const char* kSource = "accessibility";

ordered_json identifier(const HostedItem& slot) {
    return slot.identifier.empty() ? ordered_json(nullptr) : ordered_json(slot.identifier);
}

// What the window-list documents say of an item and the hosted bar's own members.
void addSlot(ordered_json& object, const HostedMenuBarItem& item, bool withHeight) {
    addFrame(object, item.slot.frame, withHeight);
    object["ownerName"] = item.ownerName;
    object["windowName"] = nullptr;
    object["bundleID"] = optionalString(item.bundleID);
    object["identifier"] = identifier(item.slot);
    object["inOverflow"] = !item.slot.frame.has_value();
    object["display"] = item.slot.displayIndex;
}

ordered_json listingItem(const HostedMenuBarItem& item) {
    ordered_json object;
    object["windowID"] = 0;
    object["layer"] = nullptr;
    object["ownerPID"] = item.slot.owner;
    object["label"] = item.displayLabel;
    object["mine"] = item.isOwn;
    addSlot(object, item, true);
    return object;
}

ordered_json rawItem(const HostedMenuBarItem& item) {
    ordered_json object;
    addSlot(object, item, false);
    return object;
}

ordered_json ownItem(const HostedMenuBarItem& item) {
    ordered_json object;
    addFrame(object, item.slot.frame, false);
    object["name"] = "";
    return object;
}

} // namespace

std::optional<std::string>
MenuBarDebug::hostedListingDocument(const std::vector<HostedMenuBarItem>& items) {
    return written(
        [&](ordered_json& document) {
            document["source"] = kSource;
            addItems(document, items, listingItem);
        },
        /*sortKeys=*/true);
}

std::optional<std::string> MenuBarDebug::hostedRawDocument(const HostedRawSnapshot& snapshot) {
    return written(
        [&](ordered_json& document) {
            document["source"] = kSource;
            document["rawCount"] = snapshot.items.size();
            // No slot has a window, let alone a name.
            document["withWindowName"] = 0;
            addRawMembers(
                document, snapshot, [](const HostedMenuBarItem& item) { return item.isOwn; },
                ownItem, rawItem);
        },
        /*sortKeys=*/false);
}

bool MenuBarDebug::onHostedBar() const {
    return hosted_.barKind(process_.processIdentifier(), process_.operatingSystemMajorVersion()) ==
           BarKind::hosted;
}

std::vector<HostedMenuBarItem> MenuBarDebug::hostedItems() const {
    auto items = hosted_.rawItems(process_.processIdentifier());
    if (!items) {
        log_.log("Quillet: the menu bar host's accessibility tree could not be read");
    }
    return items.value_or(std::vector<HostedMenuBarItem>{});
}

void MenuBarDebug::printHostedItems() {
    auto items = hostedItems();
    if (!CommandLine::hasFlag(process_.arguments(), CommandLine::kRaw)) {
        items = HostedItemEnumerator::logicalItems(std::move(items));
    }
    auto document = hostedListingDocument(items);
    if (!document) {
        log_.log("Quillet: --list-items JSON serialization failed");
        return;
    }
    process_.writeStandardOutput(*document + "\n");
}

std::optional<std::string> MenuBarDebug::hostedRawDump() {
    HostedRawSnapshot snapshot;
    snapshot.items = hostedItems();
    snapshot.displays = enumerator_.activeDisplayBounds();
    snapshot.screenRecording = screenCapture_.preflight();
    snapshot.accessibility = accessibility_.isTrusted(/*prompt=*/false);
    return hostedRawDocument(snapshot);
}

} // namespace quillet
