#include "sim/settings/SettingsSteps.hpp"

#include "sim/JsonInput.hpp"
#include "sim/app/SimulatedWorld.hpp"

#include <chrono>
#include <map>

namespace quillet::sim::SettingsSteps {

namespace {

using nlohmann::json;

// The members each step needs and the kind of value of each.
enum class Kind { text, boolean, direction, milliseconds };
const std::map<std::string_view, std::map<std::string_view, Kind>>& steps() {
    static const std::map<std::string_view, std::map<std::string_view, Kind>> members{
        {"openSettings", {}},
        {"closeSettings", {}},
        {"selectPane", {{"pane", Kind::text}}},
        {"flip", {{"row", Kind::text}}},
        {"step", {{"row", Kind::text}, {"by", Kind::direction}}},
        {"pick", {{"row", Kind::text}, {"choice", Kind::text}}},
        {"press", {{"button", Kind::text}}},
        {"type", {{"text", Kind::text}}},
        {"search", {{"text", Kind::text}}},
        {"clearSearch", {}},
        {"setPermission", {{"permission", Kind::text}, {"granted", Kind::boolean}}},
        {"answerPrompts", {{"permission", Kind::text}, {"answer", Kind::text}}},
        {"refuseLoginItem", {{"reason", Kind::text}}},
        {"holdLoginItemForApproval", {}},
    };
    return members;
}

bool fits(const json& value, Kind kind) {
    switch (kind) {
    case Kind::text:
        return value.is_string();
    case Kind::boolean:
        return value.is_boolean();
    case Kind::direction:
        return value == 1 || value == -1;
    case Kind::milliseconds:
        break;
    }
    return value.is_number_integer() && value.get<std::int64_t>() >= 0 &&
           value.get<std::int64_t>() <= 3'600'000;
}

bool isPermission(const json& value) {
    return value == "accessibility" || value == "screenRecording";
}

constexpr ButtonEvent kRightMouseUp{4, 0};

std::vector<std::string> windowLines(const SimulatedWorld& world) {
    const SimSettingsWindow* window = world.settingsWindows.window();
    if (!window || !window->isVisible()) {
        return {"settings: (no window on screen)"};
    }
    std::vector<std::string> lines;
    for (const std::string& line : window->render()) {
        lines.push_back("│ " + line);
    }
    return lines;
}

std::string dockLine(const SimulatedWorld& world) {
    const auto policy = world.application.activationPolicy();
    return policy == ActivationPolicy::regular ? "Dock: Quillet's icon shows"
                                               : "Dock: no icon for Quillet";
}

void answerPrompts(SimulatedWorld& world, const json& step) {
    const auto answer = step["answer"] == "grant" ? SimulatedPrivacyPrompts::Answer::grant
                                                  : SimulatedPrivacyPrompts::Answer::refuse;
    const auto after = std::chrono::milliseconds(step.value("afterMs", 0));
    if (step["permission"] == "accessibility") {
        world.privacyPrompts.answerAccessibility(answer, after);
    } else {
        world.privacyPrompts.answerScreenRecording(answer, after);
    }
}

// Steps that need the window on screen; false when what they name is not there to use.
bool useWindow(SimSettingsWindow& window, const std::string& action, const json& step) {
    if (action == "closeSettings") {
        return window.close();
    }
    if (action == "selectPane") {
        return window.selectPane(step["pane"]);
    }
    if (action == "press") {
        return window.press(step["button"], step.value("row", ""));
    }
    if (action == "type") {
        return window.type(step["text"]);
    }
    if (action == "search") {
        return window.search(step["text"]);
    }
    if (action == "clearSearch") {
        return window.clearSearch();
    }
    const std::string row = step["row"];
    if (action == "flip") {
        return window.flip(row);
    }
    if (action == "step") {
        return window.step(row, step["by"].get<int>());
    }
    return window.pick(row, step["choice"]);
}

} // namespace

bool isSettingsStep(std::string_view name) {
    return steps().contains(name);
}

void validate(const json& step, const std::string& where) {
    const auto& members = steps().at(step["do"].get<std::string>());
    for (const auto& [name, kind] : members) {
        auto found = step.find(name);
        if (found == step.end() || !fits(*found, kind)) {
            throw Malformed{where + ": \"" + std::string(name) + "\" is missing or not " +
                            (kind == Kind::text        ? "a string"
                             : kind == Kind::boolean   ? "true or false"
                             : kind == Kind::direction ? "1 or -1"
                                                       : "a number of milliseconds")};
        }
    }
    if (step.contains("permission") && !isPermission(step["permission"])) {
        throw Malformed{where +
                        ": \"permission\" must be \"accessibility\" or \"screenRecording\""};
    }
    if (step.contains("answer") && step["answer"] != "grant" && step["answer"] != "refuse") {
        throw Malformed{where + ": \"answer\" must be \"grant\" or \"refuse\""};
    }
    for (const char* optional : {"row"}) {
        if (step.contains(optional) && !step[optional].is_string()) {
            throw Malformed{where + ": \"" + optional + "\" must be a string"};
        }
    }
    if (step.contains("afterMs") && !fits(step["afterMs"], Kind::milliseconds)) {
        throw Malformed{where +
                        ": \"afterMs\" must be a whole number of milliseconds up to an hour"};
    }
}

std::optional<std::string> perform(SimulatedWorld& world, const json& step) {
    const std::string action = step["do"];
    if (action == "openSettings") {
        if (auto toggle = world.mac.ownStatusItem("quillet.toggle")) {
            toggle->click(kRightMouseUp);
            toggle->chooseMenuEntry("Settings…");
        }
    } else if (action == "setPermission") {
        step["permission"] == "accessibility"
            ? world.mac.setAccessibilityTrusted(step["granted"])
            : world.mac.setScreenRecordingAllowed(step["granted"]);
    } else if (action == "answerPrompts") {
        answerPrompts(world, step);
    } else if (action == "refuseLoginItem") {
        world.loginItem.refuseWith(step["reason"].get<std::string>());
    } else if (action == "holdLoginItemForApproval") {
        world.loginItem.holdForApproval(true);
    } else if (SimSettingsWindow* window = world.settingsWindows.window();
               !window || !window->isVisible()) {
        return "settings: the window is not open";
    } else if (!useWindow(*window, action, step)) {
        return "settings: nothing to " + action + " there";
    }
    return std::nullopt;
}

std::vector<std::string> describe(const SimulatedWorld& world, const json& step) {
    const std::string action = step["do"];
    if (action == "openSettings") {
        auto lines = windowLines(world);
        lines.push_back(dockLine(world));
        return lines;
    }
    if (action == "closeSettings") {
        return {dockLine(world)};
    }
    if (action == "selectPane" || action == "press" || action == "type" || action == "search" ||
        action == "clearSearch") {
        return windowLines(world);
    }
    const SimSettingsWindow* window = world.settingsWindows.window();
    if (step.contains("row") && window) {
        // The row may be gone after its own action (a deleted profile's row).
        if (auto line = window->rowLine(step["row"])) {
            return {"settings: " + *line};
        }
    }
    return {};
}

} // namespace quillet::sim::SettingsSteps
