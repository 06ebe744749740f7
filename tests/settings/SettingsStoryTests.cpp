#include "sim/app/Scenario.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/settings/SettingsLaunch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace quillet {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

std::string played(const std::string& text) {
    auto scenario = sim::parseScenario(text);
    EXPECT_TRUE(scenario.value) << scenario.error;
    std::string output;
    sim::ScenarioPlayer(std::move(*scenario.value)).play([&](const std::string& line) {
        output += line + "\n";
    });
    return output;
}

// The bar as printed right after the step titled `step`.
std::string barAfter(const std::string& output, const std::string& step) {
    const auto heading = output.find(step + "  (t=");
    if (heading == std::string::npos) {
        return "(no step " + step + ")";
    }
    const auto start = output.find('\n', heading) + 1;
    return output.substr(start, output.find('\n', start) - start);
}

// What the player printed from the step titled `from` up to the one titled `to`.
std::string between(const std::string& output, const std::string& from, const std::string& to) {
    const auto start = output.find(from + "  (t=");
    return start == std::string::npos ? ""
                                      : output.substr(start, output.find(to + "  (t=") - start);
}

TEST(SettingsStory, PreferencesChangedInTheWindowTakeEffectOnTheBar) {
    std::ifstream file(QUILLET_FIXTURES_DIR "/scenarios/settings-window.json");
    std::stringstream text;
    text << file.rdbuf();
    const std::string output = played(text.str());

    // Hover no longer opens the zone once "Reveal on hover" is off.
    EXPECT_THAT(output, HasSubstr("settings: Reveal on hover                                     "
                                  "[off]\n4. pointer onto the menu bar: nothing opens  (t=5.00s)\n"
                                  "    (<alwaysSeparator 10000>) (Docker) (Dropbox) <separator "
                                  "10000>"));
    // The Focus profile brings Dropbox and Docker out and hides Spotify.
    EXPECT_THAT(output, HasSubstr("(Spotify) <separator 10000> <toggle> [Dropbox] [Docker]"));
    EXPECT_THAT(output, HasSubstr("│ │ Active profile                                      "
                                  "[Evening ▾]"));
    EXPECT_THAT(output, HasSubstr("│ │ Delete “Evening”"));
    EXPECT_THAT(output, HasSubstr("settings: Launch at login                                     "
                                  "[off]\n    log: [Quillet] LaunchAtLogin toggle failed"));
    // Allowed a second after the request, shown only once Refresh reads it again.
    EXPECT_THAT(between(output, "15. Grant… Screen Recording", "17. Refresh"),
                HasSubstr("│ │ Screen Recording                                    Not granted"));
    EXPECT_THAT(between(output, "17. Refresh", "18. close the window"),
                HasSubstr("│ │ Screen Recording                                    Granted"));
    EXPECT_THAT(output, HasSubstr("Dock: no icon for Quillet"));
}

// Also without Screen Recording, where macOS 26 names no item window and only Accessibility
// says which application's item is where.
TEST(SettingsStory, AnItemRuledFromTheItemsPaneMovesBetweenTheZones) {
    std::ifstream file(QUILLET_FIXTURES_DIR "/scenarios/items-pane.json");
    std::stringstream text;
    text << file.rdbuf();
    for (const bool screenRecording : {true, false}) {
        std::string scenario = text.str();
        scenario.insert(scenario.find('{') + 1,
                        std::string("\"permissions\": {\"screenRecording\": ") +
                            (screenRecording ? "true" : "false") + "},");
        const std::string output = played(scenario);
        SCOPED_TRACE(output);

        // Without the grant the system's items cannot be named.
        EXPECT_THAT(output, HasSubstr(screenRecording ? "│ 1 of 7 items\n" : "│ 1 of 3 items\n"));
        // "Always": left of the always-hidden separator.
        EXPECT_THAT(barAfter(output, "Spotify: Always"), HasSubstr("(Spotify) (<alwaysSeparator"));
        // "Auto": hidden, out while Spotify is in front, hidden again after.
        EXPECT_THAT(barAfter(output, "Spotify: Auto"),
                    HasSubstr("(<alwaysSeparator 10000>) (Spotify) (Docker) <separator"));
        EXPECT_THAT(barAfter(output, "Spotify comes to the front"),
                    HasSubstr("<separator 10000> [Dropbox] [Spotify] <toggle>"));
        EXPECT_THAT(barAfter(output, "Docker comes to the front"),
                    HasSubstr("(<alwaysSeparator 10000>) (Spotify) (Docker)"));
        EXPECT_THAT(output, HasSubstr("│ │ ◆ Spotify                                           "
                                      "[Show|Hide|Always|*Auto*]"));
    }
}

TEST(SettingsStory, StepsOnAWindowThatIsNotThereSayWhyAndChangeNothing) {
    const std::string output = played(R"({"steps": [
        {"do": "launch"}, {"do": "flip", "row": "Reveal on hover"}, {"do": "openSettings"},
        {"do": "flip", "row": "No such row"}, {"do": "type", "text": "x"},
        {"do": "pick", "row": "Toggle hidden items", "choice": "⌘⌘"}]})");
    EXPECT_THAT(output, HasSubstr("2. flip  (t=5.00s)\n"));
    EXPECT_THAT(output, HasSubstr("settings: the window is not open"));
    EXPECT_THAT(output, HasSubstr("settings: nothing to flip there"));
    EXPECT_THAT(output, HasSubstr("settings: nothing to type there"));
    EXPECT_THAT(output, HasSubstr("settings: nothing to pick there"));
    EXPECT_THAT(output, HasSubstr("│ │ Reveal on hover                                     [on]"));
}

TEST(SettingsStory, RejectsMalformedSettingsStepsWithOneLine) {
    const std::pair<const char*, const char*> cases[] = {
        {R"({"steps": [{"do": "flip"}]})", "step 1: \"row\" is missing or not a string"},
        {R"({"steps": [{"do": "step", "row": "Menu bar spacers", "by": 2}]})",
         "step 1: \"by\" is missing or not 1 or -1"},
        {R"({"steps": [{"do": "setPermission", "permission": "camera", "granted": true}]})",
         "step 1: \"permission\" must be"},
        {R"({"steps": [{"do": "answerPrompts", "permission": "accessibility", "answer": "maybe"}]})",
         "step 1: \"answer\" must be \"grant\" or \"refuse\""},
        {R"({"steps": [{"do": "press", "button": "Save", "row": 3}]})",
         "step 1: \"row\" must be a string"},
    };
    for (const auto& [text, message] : cases) {
        auto result = sim::parseScenario(text);
        EXPECT_FALSE(result.value) << text;
        EXPECT_THAT(result.error, HasSubstr(message)) << text;
    }
}

TEST(SettingsStory, LaunchingWithOpenSettingsPrintsTheChosenPane) {
    auto scenario = sim::parseScenario(R"({"steps": []})");
    const auto permissions = sim::launchWithSettingsOpen(*scenario.value, {"--tab=permissions"});
    EXPECT_THAT(permissions, Contains("General   Menu Bar Items   ▸ Permissions"));
    EXPECT_THAT(permissions, Contains("✓ Enough permission for identity"));
    const auto items = sim::launchWithSettingsOpen(*scenario.value, {"--tab=items"});
    EXPECT_THAT(items, Contains("🔍 [Search menu bar items] [(arrow.clockwise)]"));
    EXPECT_THAT(items,
                Contains("│ ▣ Control Center                                    (Always visible)"));
    const auto general = sim::launchWithSettingsOpen(*scenario.value, {"--tab=Permissions"});
    EXPECT_THAT(general, Contains("▸ General   Menu Bar Items   Permissions"));
}

} // namespace
} // namespace quillet
