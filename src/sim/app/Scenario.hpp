#pragma once

#include "sim/JsonInput.hpp"
#include "sim/SimulatedMac.hpp"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::sim {

// A story to play on a simulated Mac with Quillet running: the menu bar it starts with, the
// user's rules and profiles, and the steps that happen. Written as JSON:
//
//   {"macOS": 26,                             the major version; from 27 on, the hosted bar
//    "naming": "macOS26",                                       or "perApplication"
//    "systemItems": [{"name": "Battery", "width": 38}, …],       left to right
//    "apps": [{"bundleID": "com.getdropbox.dropbox", "name": "Dropbox", "pid": 701,
//              "width": 28, "title": "…"}, …],                   left to right
//    "rules": {"com.getdropbox.dropbox": "hidden", "sys:Battery": "hidden", …},
//    "permissions": {"screenRecording": false, "accessibility": false},   both true if left out
//    "profiles": {"Work": {…rules…}},
//    "steps": [{"do": "launch"}, {"do": "pressHotKey"}, {"do": "hoverMenuBar"},
//              {"do": "pointerAway"}, {"do": "wait", "ms": 600}, {"do": "clickToggle"},
//              {"do": "activate", "app": "<bundle id>"}, {"do": "switchProfile", "name": "Work"},
//              {"do": "launchApp", "app": {…as in apps…}}, {"do": "quitApp", "app": "<bundle
//              id>"}, {"do": "keyboardNav"}, {"do": "pressKey", "key": "right"},
//              {"do": "userDrags", "item": "Dropbox", "leftOf": "separator"}]}
//   (keys: "left", "right", "up", "down", "return", "enter", "escape"; the user's own
//   Command-drag names items as the bar shows them, ours as "toggle", "separator" and
//   "alwaysSeparator", and takes "leftOf" or "rightOf")
//   and the settings window's steps, documented in sim/settings/SettingsSteps.hpp
//   ({"do": "openSettings"}, {"do": "flip", "row": "Reveal on hover"}, …).
//
// Every step may carry a "title" to print instead of its own description.
struct Scenario {
    struct App {
        SimulatedMac::Application application;
        double width = 24;
        std::string title; // the window title under macOS 26 naming: the bundle identifier
    };
    struct SystemItem {
        std::string name;
        double width = 24;
    };
    enum class Action {
        launch,
        pressHotKey,
        hoverMenuBar,
        pointerAway,
        wait,
        clickToggle,
        activate,
        switchProfile,
        launchApp,
        quitApp,
        keyboardNav,
        pressKey,
        userDrags,
        settings
    };
    struct Step {
        Action action = Action::launch;
        std::string title;
        std::string argument; // the app, the profile, the key or the item dragged
        // The user's drag: the item it ends beside, and on which side.
        std::string anchor;
        bool leftOfAnchor = true;
        std::int64_t milliseconds = 0;
        std::optional<App> app;
        nlohmann::json settings; // a settings step as written
    };

    int macOS = 26;
    MenuBarNaming naming = MenuBarNaming::macOS26;
    bool screenRecording = true;
    bool accessibility = true;
    std::vector<SystemItem> systemItems;
    std::vector<App> apps;
    nlohmann::json rules = nlohmann::json::object();
    nlohmann::json profiles = nlohmann::json::object();
    std::vector<Step> steps;

    // The scenario quillet-sim plays when given none: a macOS 26 bar with about fourteen items
    // and rules of every section, through launch, hot key, hover, an Auto app, a newly launched
    // app and a profile switch.
    static std::string_view builtIn();
    // The same bar and rules on the hosted bar of macOS 27, where Quillet can move nothing: the
    // user makes the Command-drags Quillet asks for, then hides, reveals and brings the Auto
    // app to the front.
    static std::string builtInHosted();
};

using ScenarioResult = ParseResult<Scenario>;

ScenarioResult parseScenario(std::string_view text);

} // namespace quillet::sim
