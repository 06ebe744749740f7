#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::sim {

struct SimulatedWorld;

// What a scenario does with the settings window, as the user would:
//
//   {"do": "openSettings"}                            the toggle's menu: "Settings…"
//   {"do": "closeSettings"}                           the window's close button
//   {"do": "selectPane", "pane": "Permissions"}       a sidebar entry, by its title
//   {"do": "flip", "row": "Reveal on hover"}          a row's switch
//   {"do": "step", "row": "Menu bar spacers", "by": 1}   the stepper's up (1) or down (-1) arrow
//   {"do": "pick", "row": "Active profile", "choice": "Work"}   a pop-up or segmented entry
//   {"do": "press", "button": "Grant…", "row": "Screen Recording"}   "row" is optional
//   {"do": "type", "text": "  Work  "}                into the open alert's field
//   {"do": "search", "text": "drop"}                  into the page's search field
//   {"do": "clearSearch"}                             the search field's clear button
//   {"do": "press", "button": "Refresh list"}         a symbol button is named by its tooltip
//   {"do": "pick", "row": "Dropbox", "choice": "Always"}   an item's section, by its label
//   {"do": "setPermission", "permission": "screenRecording", "granted": true}
//                                                     the user changes it in System Settings
//   {"do": "answerPrompts", "permission": "accessibility", "answer": "grant", "afterMs": 1500}
//                                                     how the user answers the system's prompt
//   {"do": "refuseLoginItem", "reason": "Operation not permitted"}
//                                                     the system refuses the login item
//   {"do": "holdLoginItemForApproval"}                the system accepts it but waits for the
//                                                     user's approval in System Settings
namespace SettingsSteps {

// Whether `name` is one of the steps above.
bool isSettingsStep(std::string_view name);

// Checks a step's members; throws Malformed naming `where` when one is missing or wrong.
void validate(const nlohmann::json& step, const std::string& where);

// Does the step; says why when there was nothing to do it to (no window, no such row).
std::optional<std::string> perform(SimulatedWorld& world, const nlohmann::json& step);

// What the user sees once the step has settled: the whole window after opening it, changing the
// pane, pressing a button or typing; the touched row after using its control; the Dock after
// opening or closing.
std::vector<std::string> describe(const SimulatedWorld& world, const nlohmann::json& step);

} // namespace SettingsSteps

} // namespace quillet::sim
