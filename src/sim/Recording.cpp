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

double coordinate(const json& display, const char* name, std::size_t index) {
    auto member = display.find(name);
    if (member == display.end() || !member->is_number() ||
        !(std::fabs(member->get<double>()) < kCoordinateLimit)) {
        throw Malformed{"display " + std::to_string(index) + ": \"" + name + "\" must be a number"};
    }
    return member->get<double>();
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
        bounds.push_back(makeRect(coordinate(displays[i], "x", i), coordinate(displays[i], "y", i),
                                  coordinate(displays[i], "w", i),
                                  coordinate(displays[i], "h", i)));
    }
    return bounds;
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
