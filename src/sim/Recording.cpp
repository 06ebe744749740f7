#include "sim/Recording.hpp"

#include "core/support/Text.hpp"
#include "sim/JsonInput.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>

namespace quillet::sim {

namespace {

using nlohmann::json;

constexpr std::array<WindowKey, 6> kWindowKeys{WindowKey::layer,     WindowKey::bounds,
                                               WindowKey::ownerPID,  WindowKey::number,
                                               WindowKey::ownerName, WindowKey::name};

// Beyond this, a coordinate is no longer one a display could have.
constexpr double kCoordinateLimit = 1e15;
// More displays than a Mac drives.
constexpr std::size_t kMostDisplays = 64;

WindowValue toWindowValue(const json& value) {
    switch (value.type()) {
    case json::value_t::boolean:
        return {value.get<bool>()};
    case json::value_t::number_integer:
        return {value.get<std::int64_t>()};
    case json::value_t::number_unsigned: {
        auto number = value.get<std::uint64_t>();
        if (number <= static_cast<std::uint64_t>(INT64_MAX)) {
            return {static_cast<std::int64_t>(number)};
        }
        return {static_cast<double>(number)};
    }
    case json::value_t::number_float:
        return {value.get<double>()};
    case json::value_t::string:
        return {value.get<std::string>()};
    case json::value_t::object: {
        WindowValue::Dictionary members;
        for (const auto& [name, member] : value.items()) {
            members.push_back({name, toWindowValue(member)});
        }
        return {std::move(members)};
    }
    default:
        return {WindowValue::Unsupported{}};
    }
}

void checkBoundsRange(const json& bounds, std::size_t index) {
    if (!bounds.is_object()) {
        return;
    }
    for (const auto& [name, member] : bounds.items()) {
        if (member.is_number() && !(std::fabs(member.get<double>()) < kCoordinateLimit)) {
            throw Malformed{"window " + std::to_string(index) + ": bounds value " + name +
                            " is out of range"};
        }
    }
}

SimulatedMac::Window parseWindow(const json& entry, std::size_t index) {
    if (!entry.is_object()) {
        throw Malformed{"window " + std::to_string(index) + " is not an object"};
    }
    SimulatedMac::Window window;
    for (WindowKey key : kWindowKeys) {
        auto member = entry.find(std::string(windowKeyName(key)));
        if (member != entry.end()) {
            if (key == WindowKey::bounds) {
                checkBoundsRange(*member, index);
            }
            window[key] = toWindowValue(*member);
        }
    }
    return window;
}

// A coordinate member of `object`, which `where` names in the message.
double coordinate(const json& object, const char* name, const std::string& where) {
    auto member = object.find(name);
    if (member == object.end() || !member->is_number() ||
        !(std::fabs(member->get<double>()) < kCoordinateLimit)) {
        throw Malformed{where + ": \"" + name + "\" must be a number"};
    }
    return member->get<double>();
}

// "x", "y", "w" and "h" of `object`, read in that order so that the first bad one is named.
Rect rectangle(const json& object, const std::string& where) {
    const double x = coordinate(object, "x", where);
    const double y = coordinate(object, "y", where);
    const double w = coordinate(object, "w", where);
    return makeRect(x, y, w, coordinate(object, "h", where));
}

std::vector<Rect> parseDisplays(const json& displays) {
    if (!displays.is_array()) {
        throw Malformed{"\"displays\" must be an array"};
    }
    std::vector<Rect> bounds;
    for (std::size_t i = 0; i < displays.size(); ++i) {
        if (!displays[i].is_object()) {
            throw Malformed{"display " + std::to_string(i) + " is not an object"};
        }
        bounds.push_back(rectangle(displays[i], "display " + std::to_string(i)));
    }
    return bounds;
}

Pid processNumber(const json& object, const char* name, const std::string& where) {
    auto member = object.find(name);
    if (member == object.end() || !member->is_number_integer() || *member < INT32_MIN ||
        *member > INT32_MAX) {
        throw Malformed{where + ": \"" + name + "\" must be a process number"};
    }
    return member->get<Pid>();
}

std::optional<Rect> parseSlotFrame(const json& slot, const std::string& where) {
    auto frame = slot.find("frame");
    if (frame == slot.end() || frame->is_null()) {
        return std::nullopt;
    }
    if (!frame->is_object()) {
        throw Malformed{where + ": \"frame\" must be an object"};
    }
    return rectangle(*frame, where);
}

HostedItem parseSlot(const json& slot, std::size_t index) {
    const std::string where = "host slot " + std::to_string(index);
    if (!slot.is_object()) {
        throw Malformed{where + " is not an object"};
    }
    HostedItem item;
    item.owner = processNumber(slot, "ownerPID", where);
    if (auto identifier = slot.find("identifier"); identifier != slot.end()) {
        if (!identifier->is_string()) {
            throw Malformed{where + ": \"identifier\" must be a string"};
        }
        item.identifier = identifier->get<std::string>();
    }
    if (auto display = slot.find("display"); display != slot.end()) {
        if (!display->is_number_unsigned() || *display > kMostDisplays) {
            throw Malformed{where + ": \"display\" must be a display's index"};
        }
        item.displayIndex = display->get<std::size_t>();
    }
    item.frame = parseSlotFrame(slot, where);
    return item;
}

std::vector<HostedItem> parseHostTree(const json& slots) {
    if (!slots.is_array()) {
        throw Malformed{"\"menuBarHost\" must be an array"};
    }
    std::vector<HostedItem> items;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        items.push_back(parseSlot(slots[i], i));
    }
    return items;
}

void parseRunning(const json& running, SimulatedMac& mac) {
    if (!running.is_array()) {
        throw Malformed{"\"running\" must be an array"};
    }
    for (std::size_t i = 0; i < running.size(); ++i) {
        const std::string where = "running application " + std::to_string(i);
        const json& entry = running[i];
        if (!entry.is_object()) {
            throw Malformed{where + " is not an object"};
        }
        const Pid pid = processNumber(entry, "pid", where);
        auto bundleID = entry.find("bundleID");
        auto name = entry.find("name");
        if (bundleID == entry.end() || !bundleID->is_string() ||
            (name != entry.end() && !name->is_string())) {
            throw Malformed{where + ": \"bundleID\" and \"name\" must be strings"};
        }
        auto pids = mac.runningProcesses(bundleID->get<std::string>());
        pids.push_back(pid);
        mac.setRunningProcesses(bundleID->get<std::string>(), std::move(pids));
        if (name != entry.end()) {
            mac.setProcessName(pid, name->get<std::string>());
        }
    }
}

void parseApps(const json& apps, SimulatedMac& mac) {
    if (!apps.is_object()) {
        throw Malformed{"\"apps\" must be an object"};
    }
    for (const auto& [bundleID, path] : apps.items()) {
        if (!path.is_string()) {
            throw Malformed{"app " + quotedForMessage(bundleID) + ": the path must be a string"};
        }
        mac.installApplication(bundleID, path.get<std::string>());
    }
}

bool flag(const json& document, const char* name) {
    auto member = document.find(name);
    if (member == document.end()) {
        return false;
    }
    if (!member->is_boolean()) {
        throw Malformed{std::string("\"") + name + "\" must be true or false"};
    }
    return member->get<bool>();
}

Recording parse(const json& document) {
    if (!document.is_object()) {
        throw Malformed{"the recording must be a JSON object"};
    }
    auto windows = document.find("windows");
    if (windows == document.end() || !windows->is_array()) {
        throw Malformed{"\"windows\" must be an array"};
    }
    Recording recording;
    if (auto displays = document.find("displays"); displays != document.end()) {
        recording.mac.setDisplays(parseDisplays(*displays));
    }
    for (std::size_t i = 0; i < windows->size(); ++i) {
        recording.mac.addWindow(parseWindow((*windows)[i], i));
    }
    if (auto ownPID = document.find("ownPID"); ownPID != document.end()) {
        if (!ownPID->is_number_integer() || *ownPID < INT32_MIN || *ownPID > INT32_MAX) {
            throw Malformed{"\"ownPID\" must be a process number"};
        }
        recording.ownPID = ownPID->get<Pid>();
    }
    if (auto apps = document.find("apps"); apps != document.end()) {
        parseApps(*apps, recording.mac);
    }
    recording.osMajorVersion = readMacOSVersion(document).value_or(recording.osMajorVersion);
    if (auto running = document.find("running"); running != document.end()) {
        parseRunning(*running, recording.mac);
    }
    if (auto host = document.find("menuBarHost"); host != document.end()) {
        recording.mac.setRecordedHostedItems(parseHostTree(*host));
        recording.mac.setRunningProcesses(std::string(kMenuBarHostBundleID),
                                          {SimulatedMac::kMenuBarHostPID});
    }
    recording.mac.setScreenRecordingAllowed(flag(document, "screenRecording"));
    recording.mac.setAccessibilityTrusted(flag(document, "accessibility"));
    return recording;
}

} // namespace

std::string_view windowKeyName(WindowKey key) {
    switch (key) {
    case WindowKey::layer:
        return "kCGWindowLayer";
    case WindowKey::bounds:
        return "kCGWindowBounds";
    case WindowKey::ownerPID:
        return "kCGWindowOwnerPID";
    case WindowKey::number:
        return "kCGWindowNumber";
    case WindowKey::ownerName:
        return "kCGWindowOwnerName";
    case WindowKey::name:
        return "kCGWindowName";
    }
    return "";
}

RecordingResult parseRecording(std::string_view text) {
    return readJsonInput<Recording>(text, "recording", parse);
}

} // namespace quillet::sim
