#include "sim/SimulatedLog.hpp"
#include "sim/app/Scenario.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace quillet {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(Scenario, RejectsMalformedScenariosWithOneLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"{", "not valid JSON"},
        {"[]", "must be a JSON object"},
        {R"({"steps": [{"do": "dance"}]})", "step 1: there is no step \"dance\""},
        {R"({"steps": [{"do": "wait"}]})", "step 1: \"ms\" is missing"},
        {R"({"steps": [{"do": "wait", "ms": -5}]})", "step 1: \"ms\" must be a whole number"},
        {R"({"steps": [{"do": "activate", "app": 3}]})", "step 1: \"app\" must be a string"},
        {R"({"apps": [{"bundleID": "a.b", "name": "A", "pid": "x"}]})",
         "app 0: \"pid\" must be a process number"},
        {R"({"apps": [{"bundleID": "a.b", "name": "A", "pid": 3, "width": 9000}]})",
         "app 0: \"width\" must be a width from 1 to 600"},
        {R"({"naming": "macOS7"})", "\"naming\" must be"},
        {R"({"macOS": 12})", "\"macOS\" must be a major version such as 26 or 27"},
        {R"({"rules": []})", "\"rules\" must be an object"},
        {R"({"steps": [{"do": "pressKey", "key": "tab"}]})", "step 1: there is no key \"tab\""},
        // What a user wrote is quoted, never allowed to break the line.
        {R"({"steps": [{"do": "da\nce"}]})", R"(step 1: there is no step "da\nce")"},
        {R"({"steps": [{"do": "pressKey", "key": "\"\u0001"}]})", R"(no key "\"\u0001")"},
        {R"({"permissions": {"cam\r": 1}})", R"(permission "cam\u000d" must be)"},
        {R"({"permissions": {"camera": false}})", "there is no permission \"camera\""},
        {R"({"steps": [{"do": "userDrags", "item": "Dropbox", "leftOf": "toggle", "rightOf": "x"}]})",
         "step 1: give one of \"leftOf\" and \"rightOf\""},
        {R"({"permissions": {"accessibility": 0}})", "must be true or false"},
        {R"({"steps": [{"do": "setPermission", "permission": "camera", "granted": true}]})",
         "step 1: \"permission\" must be \"accessibility\" or \"screenRecording\""},
        {R"({"rules": {"a": [[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]}})",
         "the scenario is nested deeper than 32 levels"},
    };
    for (const auto& [text, message] : cases) {
        auto result = sim::parseScenario(text);
        EXPECT_FALSE(result.value) << text;
        EXPECT_THAT(result.error, HasSubstr(message)) << text;
        EXPECT_EQ(result.error.find_first_of("\n\r"), std::string::npos) << text;
    }
}

std::vector<std::string> play(std::string_view text, KeyValueStore* settings = nullptr,
                              sim::ScenarioPlayer::Outcome* outcome = nullptr) {
    auto parsed = sim::parseScenario(text);
    EXPECT_TRUE(parsed.value) << parsed.error;
    std::vector<std::string> lines;
    auto result =
        sim::ScenarioPlayer(std::move(*parsed.value), settings).play([&](const std::string& line) {
            lines.push_back(line);
        });
    if (outcome) {
        *outcome = std::move(result);
    }
    return lines;
}

constexpr std::string_view kTwoApps = R"({
  "apps": [{"bundleID": "com.getdropbox.dropbox", "name": "Dropbox", "pid": 701, "width": 28},
           {"bundleID": "com.docker.docker", "name": "Docker", "pid": 703, "width": 26}],
  "rules": {"com.getdropbox.dropbox": "hidden", "sys:Clock": "hidden"},
  "profiles": {"Open": {}},
  "steps": [{"do": "launch"}, {"do": "clickToggle", "title": "toggle clicked"},
            {"do": "switchProfile", "name": "Open"}]
})";

TEST(ScenarioPlayer, PrintsTheBarAfterEveryStepWithTheLog) {
    auto lines = play(kTwoApps);
    ASSERT_EQ(lines.size(), 1u + 3 * 2 + 1 + 2);
    EXPECT_THAT(lines[1], HasSubstr("1. launch  (t="));
    EXPECT_THAT(lines[2], HasSubstr("(Dropbox) <separator 10000> [Docker]"));
    EXPECT_EQ(lines[3], "    log: Quillet: refusing to hidden system item sys:Clock "
                        "(movable=false hideable=false)");
    EXPECT_THAT(lines[4], HasSubstr("2. toggle clicked"));
    EXPECT_THAT(lines[5], HasSubstr("[Dropbox] <separator> [Docker]"));
    EXPECT_THAT(lines[7], HasSubstr("[Dropbox]"));
    EXPECT_THAT(lines[7], Not(HasSubstr("(Dropbox)")));
    EXPECT_THAT(lines[8], HasSubstr("once idle  (t="));
    EXPECT_EQ(lines[9], lines[7]);
}

TEST(ScenarioPlayer, ASecondRunWithTheSameSettingsStartsWhereTheFirstLeftOff) {
    const auto path =
        std::filesystem::path(::testing::TempDir()) / "quillet-scenario-settings.json";
    std::filesystem::remove(path);
    sim::SimulatedLog log;
    {
        sim::FileKeyValueStore settings(path, log);
        play(kTwoApps, &settings); // ends in the "Open" profile: no rules
    }
    sim::FileKeyValueStore settings(path, log);
    auto lines = play(kTwoApps, &settings);
    EXPECT_THAT(lines[2], HasSubstr("[Dropbox]"));
    EXPECT_THAT(lines[2], Not(HasSubstr("(Dropbox)")));
    std::filesystem::remove(path);
}

TEST(ScenarioPlayer, AGrantGivenMidwayIsNoticedAtTheNextApplicationSwitch) {
    auto lines = play(R"({
  "permissions": {"accessibility": false, "screenRecording": false},
  "apps": [{"bundleID": "com.getdropbox.dropbox", "name": "Dropbox", "pid": 701}],
  "rules": {"com.getdropbox.dropbox": "hidden"},
  "steps": [{"do": "launch"}, {"do": "setPermission", "permission": "accessibility", "granted": true},
            {"do": "activate", "app": "com.apple.finder"}]
})");
    EXPECT_THAT(lines[2], HasSubstr("[Dropbox]"));
    EXPECT_THAT(lines[3], HasSubstr("log: Quillet: moving menu bar items needs Accessibility"));
    EXPECT_THAT(lines[5], HasSubstr("[Dropbox]"));
    EXPECT_THAT(lines.back(), HasSubstr("(Dropbox) <separator 10000> <toggle>"));
}

TEST(ScenarioPlayer, ARunKeepsEverythingTheUserSavedInTheSettingsFile) {
    const auto path = std::filesystem::path(::testing::TempDir()) / "quillet-kept-settings.json";
    // A member of another tool with an integer beyond 64 bits, and stored rules of which one
    // is not a string ({"com.getdropbox.dropbox":"alwaysHidden","com.other":1}).
    const std::string unknown = R"("user.counter": -123456789012345678901234567890)";
    const std::string rules =
        "eyJjb20uZ2V0ZHJvcGJveC5kcm9wYm94IjoiYWx3YXlzSGlkZGVuIiwiY29tLm90aGVyIjoxfQ==";
    std::ofstream(path) << "{" << unknown << R"(, "quillet.sectionRules": {"data": ")" << rules
                        << R"("}})";
    sim::SimulatedLog log;
    sim::FileKeyValueStore settings(path, log);
    auto lines = play(kTwoApps, &settings); // its rules replace the ones that did not load

    EXPECT_THAT(lines, Contains(HasSubstr("the original is kept under "
                                          "quillet.sectionRules.unreadable")));
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_THAT(text.str(), HasSubstr(unknown));
    EXPECT_THAT(text.str(), HasSubstr(R"("quillet.sectionRules.unreadable": {)"));
    EXPECT_THAT(text.str(), HasSubstr(rules));
    EXPECT_TRUE(log.lines().empty());
    std::filesystem::remove(path);
}

} // namespace
} // namespace quillet
