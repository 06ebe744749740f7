#include "core/menubar/ItemEnumerator.hpp"
#include "sim/Recording.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillet {
namespace {

using ::testing::HasSubstr;

TEST(Recording, RejectsMalformedRecordingsWithOneLine) {
    const std::string deep = R"({"windows": [{"kCGWindowBounds": )" + std::string(32, '[') +
                             std::string(32, ']') + "}]}";
    const std::pair<const char*, const char*> cases[] = {
        {"", "not valid JSON"},
        {"[1, 2]", "must be a JSON object"},
        {R"({"displays": []})", "\"windows\" must be an array"},
        {R"({"windows": {}})", "\"windows\" must be an array"},
        {R"({"windows": [3]})", "window 0 is not an object"},
        {R"({"windows": [], "displays": [{"x": 0, "y": 0, "w": "wide", "h": 9}]})",
         "display 0: \"w\" must be a number"},
        {R"({"windows": [], "displays": {}})", "\"displays\" must be an array"},
        {R"({"windows": [], "ownPID": "me"})", "\"ownPID\" must be a process number"},
        {R"({"windows": [], "ownPID": 99999999999})", "\"ownPID\" must be a process number"},
        {R"({"windows": [], "apps": {"a.b": 3}})", "app \"a.b\": the path must be a string"},
        {R"({"windows": [], "accessibility": "yes"})", "\"accessibility\" must be true or false"},
        {R"({"windows": [{"kCGWindowBounds": {"X": 1e300, "Y": 0, "Width": 1, "Height": 1}}]})",
         "window 0: bounds value X is out of range"},
        {deep.c_str(), "the recording is nested deeper than 32 levels"},
        {R"({"windows": [], "macOS": "27"})", "\"macOS\" must be a major version"},
        {R"({"windows": [], "running": [{"pid": 7}]})", "running application 0: \"bundleID\""},
        {R"({"windows": [], "menuBarHost": [{"display": 0}]})",
         "host slot 0: \"ownerPID\" must be a process number"},
        {R"({"windows": [], "menuBarHost": [{"ownerPID": 7, "frame": {"x": 0}}]})",
         "host slot 0: \"y\" must be a number"},
    };
    for (const auto& [text, message] : cases) {
        auto result = sim::parseRecording(text);
        EXPECT_FALSE(result.value) << text;
        EXPECT_THAT(result.error, HasSubstr(message)) << text;
        EXPECT_EQ(result.error.find('\n'), std::string::npos);
    }
}

TEST(Recording, KeepsOddWindowValuesForTheCoreToJudge) {
    auto result = sim::parseRecording(R"({
        "displays": [{"x": 0, "y": 0, "w": 1512, "h": 982}],
        "ownPID": 4242,
        "apps": {"com.example.app": "/Applications/Example.app"},
        "windows": [
            {"kCGWindowLayer": "25", "kCGWindowNumber": 1},
            {"kCGWindowLayer": 25, "kCGWindowNumber": 2, "kCGWindowOwnerPID": null,
             "kCGWindowBounds": {"X": 1400, "Y": 0, "Width": 30.5, "Height": 24},
             "kCGWindowName": "com.example.app", "kCGWindowAlpha": 1}
        ]})");
    ASSERT_TRUE(result.value) << result.error;
    const auto& mac = result.value->mac;
    EXPECT_EQ(result.value->ownPID, 4242);
    ASSERT_EQ(mac.windows().size(), 2u);
    EXPECT_EQ(mac.windows()[0][WindowKey::layer].content, WindowValue{std::string("25")}.content);
    EXPECT_TRUE(std::holds_alternative<WindowValue::Unsupported>(
        mac.windows()[1][WindowKey::ownerPID].content));
    EXPECT_TRUE(mac.windows()[1][WindowKey::ownerName].isAbsent());

    ItemEnumerator enumerator(mac, mac, mac);
    auto items = enumerator.rawItems(result.value->ownPID);
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].frame, makeRect(1400, 0, 30.5, 24));
    EXPECT_EQ(items[0].ownerPID, 0);
    EXPECT_EQ(items[0].displayLabel, "Example");
}

} // namespace
} // namespace quillet
