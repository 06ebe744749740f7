#include "sim/app/Scenario.hpp"

#include "core/support/Text.hpp"
#include "sim/nav/NavigationSteps.hpp"
#include "sim/settings/SettingsSteps.hpp"

#include <map>

namespace quillet::sim {

namespace {

using nlohmann::json;

const json& member(const json& object, const char* name, const std::string& where) {
    auto found = object.find(name);
    if (found == object.end()) {
        throw Malformed{where + ": \"" + name + "\" is missing"};
    }
    return *found;
}

std::string text(const json& object, const char* name, const std::string& where) {
    const json& value = member(object, name, where);
    if (!value.is_string()) {
        throw Malformed{where + ": \"" + name + "\" must be a string"};
    }
    return value.get<std::string>();
}

double number(const json& object, const char* name, double fallback, const std::string& where) {
    auto found = object.find(name);
    if (found == object.end()) {
        return fallback;
    }
    if (!found->is_number() || found->get<double>() <= 0 || found->get<double>() > 600) {
        throw Malformed{where + ": \"" + name + "\" must be a width from 1 to 600"};
    }
    return found->get<double>();
}

const json& array(const json& document, const char* name) {
    static const json empty = json::array();
    auto found = document.find(name);
    if (found == document.end()) {
        return empty;
    }
    if (!found->is_array()) {
        throw Malformed{std::string("\"") + name + "\" must be an array"};
    }
    return *found;
}

Scenario::App parseApp(const json& entry, const std::string& where) {
    if (!entry.is_object()) {
        throw Malformed{where + " is not an object"};
    }
    Scenario::App app;
    app.application.bundleID = text(entry, "bundleID", where);
    app.application.name = text(entry, "name", where);
    const json& pid = member(entry, "pid", where);
    if (!pid.is_number_integer() || pid.get<std::int64_t>() <= 0 ||
        pid.get<std::int64_t>() > INT32_MAX) {
        throw Malformed{where + ": \"pid\" must be a process number"};
    }
    app.application.pid = pid.get<Pid>();
    app.width = number(entry, "width", 24, where);
    app.title = entry.contains("title") ? text(entry, "title", where) : app.application.bundleID;
    return app;
}

const std::map<std::string, Scenario::Action>& actions() {
    static const std::map<std::string, Scenario::Action> names{
        {"launch", Scenario::Action::launch},
        {"pressHotKey", Scenario::Action::pressHotKey},
        {"hoverMenuBar", Scenario::Action::hoverMenuBar},
        {"pointerAway", Scenario::Action::pointerAway},
        {"wait", Scenario::Action::wait},
        {"clickToggle", Scenario::Action::clickToggle},
        {"activate", Scenario::Action::activate},
        {"switchProfile", Scenario::Action::switchProfile},
        {"launchApp", Scenario::Action::launchApp},
        {"quitApp", Scenario::Action::quitApp},
        {"keyboardNav", Scenario::Action::keyboardNav},
        {"pressKey", Scenario::Action::pressKey},
        {"userDrags", Scenario::Action::userDrags},
    };
    return names;
}

Scenario::Step parseStep(const json& entry, const std::string& where) {
    if (!entry.is_object()) {
        throw Malformed{where + " is not an object"};
    }
    const std::string name = text(entry, "do", where);
    if (SettingsSteps::isSettingsStep(name)) {
        SettingsSteps::validate(entry, where);
        Scenario::Step step;
        step.action = Scenario::Action::settings;
        step.title = entry.contains("title") ? text(entry, "title", where) : name;
        step.settings = entry;
        return step;
    }
    auto action = actions().find(name);
    if (action == actions().end()) {
        throw Malformed{where + ": there is no step " + quotedForMessage(name)};
    }
    Scenario::Step step;
    step.action = action->second;
    step.title = entry.contains("title") ? text(entry, "title", where) : name;
    switch (step.action) {
    case Scenario::Action::wait: {
        const json& ms = member(entry, "ms", where);
        if (!ms.is_number_integer() || ms.get<std::int64_t>() < 0 ||
            ms.get<std::int64_t>() > 3'600'000) {
            throw Malformed{where +
                            ": \"ms\" must be a whole number of milliseconds up to an hour"};
        }
        step.milliseconds = ms.get<std::int64_t>();
        break;
    }
    case Scenario::Action::activate:
    case Scenario::Action::quitApp:
        step.argument = text(entry, "app", where);
        break;
    case Scenario::Action::switchProfile:
        step.argument = text(entry, "name", where);
        break;
    case Scenario::Action::launchApp:
        step.app = parseApp(member(entry, "app", where), where + ": app");
        break;
    case Scenario::Action::pressKey:
        step.argument = text(entry, "key", where);
        if (!NavigationSteps::keyCode(step.argument)) {
            throw Malformed{where + ": there is no key " + quotedForMessage(step.argument)};
        }
        break;
    case Scenario::Action::userDrags:
        step.argument = text(entry, "item", where);
        if (entry.contains("leftOf") == entry.contains("rightOf")) {
            throw Malformed{where + ": give one of \"leftOf\" and \"rightOf\""};
        }
        step.leftOfAnchor = entry.contains("leftOf");
        step.anchor = text(entry, step.leftOfAnchor ? "leftOf" : "rightOf", where);
        break;
    default:
        break;
    }
    return step;
}

void parsePermissions(const json& permissions, Scenario& scenario) {
    if (!permissions.is_object()) {
        throw Malformed{"\"permissions\" must be an object"};
    }
    for (const auto& [name, granted] : permissions.items()) {
        if (!granted.is_boolean()) {
            throw Malformed{"permission " + quotedForMessage(name) + " must be true or false"};
        }
        if (name == "accessibility") {
            scenario.accessibility = granted.get<bool>();
        } else if (name == "screenRecording") {
            scenario.screenRecording = granted.get<bool>();
        } else {
            throw Malformed{"there is no permission " + quotedForMessage(name)};
        }
    }
}

json sectionMap(const json& value, const std::string& where) {
    if (!value.is_object()) {
        throw Malformed{where + " must be an object"};
    }
    return value;
}

Scenario parse(const json& document) {
    if (!document.is_object()) {
        throw Malformed{"the scenario must be a JSON object"};
    }
    Scenario scenario;
    scenario.macOS = readMacOSVersion(document).value_or(scenario.macOS);
    if (auto naming = document.find("naming"); naming != document.end()) {
        if (*naming == "perApplication") {
            scenario.naming = MenuBarNaming::perApplication;
        } else if (*naming != "macOS26") {
            throw Malformed{"\"naming\" must be \"macOS26\" or \"perApplication\""};
        }
    }
    if (auto permissions = document.find("permissions"); permissions != document.end()) {
        parsePermissions(*permissions, scenario);
    }
    const json& systemItems = array(document, "systemItems");
    for (std::size_t i = 0; i < systemItems.size(); ++i) {
        const std::string where = "system item " + std::to_string(i);
        if (!systemItems[i].is_object()) {
            throw Malformed{where + " is not an object"};
        }
        scenario.systemItems.push_back(
            {text(systemItems[i], "name", where), number(systemItems[i], "width", 24, where)});
    }
    const json& apps = array(document, "apps");
    for (std::size_t i = 0; i < apps.size(); ++i) {
        scenario.apps.push_back(parseApp(apps[i], "app " + std::to_string(i)));
    }
    if (auto rules = document.find("rules"); rules != document.end()) {
        scenario.rules = sectionMap(*rules, "\"rules\"");
    }
    if (auto profiles = document.find("profiles"); profiles != document.end()) {
        scenario.profiles = sectionMap(*profiles, "\"profiles\"");
    }
    const json& steps = array(document, "steps");
    for (std::size_t i = 0; i < steps.size(); ++i) {
        scenario.steps.push_back(parseStep(steps[i], "step " + std::to_string(i + 1)));
    }
    return scenario;
}

} // namespace

ScenarioResult parseScenario(std::string_view text) {
    return readJsonInput<Scenario>(text, "scenario", parse);
}

std::string_view Scenario::builtIn() {
    return R"json({
  "naming": "macOS26",
  "systemItems": [
    {"name": "FocusModes", "width": 26}, {"name": "Bluetooth", "width": 26},
    {"name": "WiFi", "width": 28}, {"name": "Battery", "width": 38}
  ],
  "apps": [
    {"bundleID": "com.tinyspeck.slackmacgap", "name": "Slack", "pid": 702, "width": 24},
    {"bundleID": "us.zoom.xos", "name": "Zoom", "pid": 708, "width": 26},
    {"bundleID": "com.getdropbox.dropbox", "name": "Dropbox", "pid": 701, "width": 28},
    {"bundleID": "com.docker.docker", "name": "Docker", "pid": 703, "width": 26},
    {"bundleID": "com.spotify.client", "name": "Spotify", "pid": 705, "width": 24},
    {"bundleID": "com.example.weather", "name": "Weather", "pid": 706, "width": 30},
    {"bundleID": "eu.exelban.Stats", "name": "Stats", "pid": 707, "width": 44},
    {"bundleID": "com.1password.1password", "name": "1Password", "pid": 704, "width": 24}
  ],
  "rules": {
    "com.getdropbox.dropbox": "hidden", "com.docker.docker": "hidden",
    "com.spotify.client": "hidden", "sys:FocusModes": "hidden",
    "com.tinyspeck.slackmacgap": "alwaysHidden", "us.zoom.xos": "alwaysHidden",
    "com.example.weather": "dynamic", "sys:Clock": "hidden"
  },
  "profiles": {
    "Focus": {"com.getdropbox.dropbox": "visible", "com.docker.docker": "alwaysHidden",
              "com.spotify.client": "visible", "com.tinyspeck.slackmacgap": "alwaysHidden",
              "us.zoom.xos": "alwaysHidden", "eu.exelban.Stats": "hidden"}
  },
  "steps": [
    {"do": "launch", "title": "launch and first arrangement"},
    {"do": "pressHotKey", "title": "hot key: reveal the hidden zone"},
    {"do": "pressHotKey", "title": "hot key again: hide it"},
    {"do": "hoverMenuBar", "title": "pointer onto the right half of the menu bar"},
    {"do": "pointerAway", "title": "pointer away (the zone closes 0.5 s later)"},
    {"do": "wait", "ms": 500, "title": "0.5 s later"},
    {"do": "activate", "app": "com.example.weather", "title": "Weather (Auto) comes to the front"},
    {"do": "activate", "app": "com.apple.finder", "title": "Finder comes to the front"},
    {"do": "launchApp", "title": "Bartleby launches with a new item",
     "app": {"bundleID": "com.example.bartleby", "name": "Bartleby", "pid": 709, "width": 24}},
    {"do": "switchProfile", "name": "Focus", "title": "switch to the Focus profile"}
  ]
})json";
}

std::string Scenario::builtInHosted() {
    json scenario = json::parse(builtIn());
    scenario["macOS"] = 27;
    scenario["steps"] = json::parse(R"json([
    {"do": "launch", "title": "launch: Quillet asks for the drags it cannot make"},
    {"do": "userDrags", "item": "toggle", "rightOf": "separator",
     "title": "the user drags the toggle right of the separator"},
    {"do": "userDrags", "item": "Dropbox", "leftOf": "separator", "title": "… Dropbox left of it"},
    {"do": "userDrags", "item": "Docker", "leftOf": "separator", "title": "… Docker"},
    {"do": "userDrags", "item": "Spotify", "leftOf": "separator", "title": "… Spotify"},
    {"do": "userDrags", "item": "Weather", "leftOf": "separator", "title": "… and Weather"},
    {"do": "pressHotKey", "title": "hot key: hide"},
    {"do": "wait", "ms": 2000, "title": "2 s later: one separator could not push far enough"},
    {"do": "userDrags", "item": "separator.2", "rightOf": "separator",
     "title": "the user drags the new separator beside the first"},
    {"do": "userDrags", "item": "separator.3", "rightOf": "separator", "title": "… and the other"},
    {"do": "pressHotKey", "title": "hot key: hide, into the overflow"},
    {"do": "wait", "ms": 2000, "title": "2 s later: still hidden"},
    {"do": "pressHotKey", "title": "hot key: reveal"},
    {"do": "pressHotKey", "title": "hot key: hide again"},
    {"do": "activate", "app": "com.example.weather", "title": "Weather (Auto) comes to the front"},
    {"do": "activate", "app": "com.apple.finder", "title": "Finder comes to the front"}
  ])json");
    return scenario.dump();
}

} // namespace quillet::sim
