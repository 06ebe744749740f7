#include "core/app/BundleIdentity.hpp"
#include "core/app/CommandLine.hpp"
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/SimulatedProcess.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quillet {
namespace {

using sim::SimulatedMac;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr Pid kOwnPID = 4242;

class MenuBarDebugTest : public ::testing::Test {
protected:
    MenuBarDebugTest() { mac.setDisplays({makeRect(0, 0, 1512, 982)}); }

    std::string run(std::vector<std::string> arguments) {
        sim::SimulatedProcess process(std::move(arguments), kOwnPID);
        MenuBarDebug debug(enumerator, mac, mac, process, log);
        EXPECT_TRUE(CommandLine::runDiagnosticMode(CommandLine::launchMode(process.arguments()),
                                                   debug, process));
        files = process.files();
        return process.standardOutput();
    }

    SimulatedMac mac;
    ItemEnumerator enumerator{mac, mac, mac};
    sim::SimulatedLog log;
    std::map<std::string, std::string> files;
};

TEST_F(MenuBarDebugTest, AnEmptyMenuBarListsNothing) {
    EXPECT_EQ(run({"Quillet", "--list-items"}), "{\n"
                                                "  \"count\" : 0,\n"
                                                "  \"items\" : [\n"
                                                "\n"
                                                "  ]\n"
                                                "}\n");
}

TEST_F(MenuBarDebugTest, ListsItemsWithSortedKeysRoundedFramesAndNulls) {
    mac.addWindow(SimulatedMac::statusItemWindow(7, makeRect(10.5, -10.5, 24.4, 23.5), 12,
                                                 "Stats/Helper", std::nullopt));
    EXPECT_EQ(run({"Quillet", "--list-items"}), "{\n"
                                                "  \"count\" : 0,\n"
                                                "  \"items\" : [\n"
                                                "\n"
                                                "  ]\n"
                                                "}\n");
    mac.addWindow(SimulatedMac::statusItemWindow(8, makeRect(-10.5, 0, 30, 24), 13, "Dropbox",
                                                 "com.getdropbox.dropbox"));
    EXPECT_EQ(run({"Quillet", "--list-items"}),
              "{\n"
              "  \"count\" : 1,\n"
              "  \"items\" : [\n"
              "    {\n"
              "      \"bundleID\" : \"com.getdropbox.dropbox\",\n"
              "      \"h\" : 24,\n"
              "      \"label\" : \"com.getdropbox.dropbox\",\n"
              "      \"layer\" : 25,\n"
              "      \"mine\" : false,\n"
              "      \"ownerName\" : \"Dropbox\",\n"
              "      \"ownerPID\" : 13,\n"
              "      \"w\" : 30,\n"
              "      \"windowID\" : 8,\n"
              "      \"windowName\" : \"com.getdropbox.dropbox\",\n"
              "      \"x\" : -11,\n"
              "      \"y\" : 0\n"
              "    }\n"
              "  ]\n"
              "}\n");
    // An untitled item only reaches the listing through --raw, with its nulls.
    auto raw = run({"Quillet", "--list-items", "--raw"});
    EXPECT_THAT(raw, HasSubstr("\"windowName\" : null"));
    EXPECT_THAT(raw, HasSubstr("\"bundleID\" : null"));
    EXPECT_THAT(raw, HasSubstr("\"ownerName\" : \"Stats\\/Helper\""));
    EXPECT_THAT(raw, HasSubstr("\"x\" : 11"));
    EXPECT_THAT(raw, HasSubstr("\"y\" : -11"));
    EXPECT_THAT(raw, HasSubstr("\"w\" : 24"));
}

TEST_F(MenuBarDebugTest, OnlyTheRawListingShowsOurOwnItems) {
    mac.addWindow(SimulatedMac::statusItemWindow(1, makeRect(1400, 0, 30, 24), kOwnPID, "Quillet",
                                                 "quillet.toggle"));
    mac.addWindow(
        SimulatedMac::statusItemWindow(2, makeRect(1300, 0, 30, 24), 9, "Control Center", "Clock"));
    auto logical = nlohmann::json::parse(run({"Quillet", "--list-items"}));
    auto raw = nlohmann::json::parse(run({"Quillet", "--raw", "--list-items"}));
    EXPECT_EQ(logical["count"], 1);
    EXPECT_EQ(logical["items"][0]["label"], "Clock");
    EXPECT_EQ(raw["count"], 2);
    EXPECT_EQ(raw["items"][1]["windowName"], "quillet.toggle");
    EXPECT_EQ(raw["items"][1]["mine"], true);
}

TEST_F(MenuBarDebugTest, DumpsTheRawViewToTheHomeFolder) {
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, -200.5, 1920, 1080)});
    mac.setScreenRecordingAllowed(false);
    mac.addWindow(SimulatedMac::statusItemWindow(1, makeRect(1400, 0, 30, 24), kOwnPID, "Quillet",
                                                 std::nullopt));
    mac.addWindow(SimulatedMac::statusItemWindow(2, makeRect(1300, 0, 30, 24), 9, "Control Center",
                                                 "quillet.separator"));
    mac.addWindow(SimulatedMac::statusItemWindow(3, makeRect(1200, 0, 30, 24), 9, "Control Center",
                                                 "Item-0"));

    EXPECT_THAT(run({"Quillet", "--dump-raw", "--raw"}), IsEmpty());
    ASSERT_TRUE(files.contains("/Users/me/quillet-raw.json"));
    EXPECT_EQ(files["/Users/me/quillet-raw.json"], "{\n"
                                                   "  \"rawCount\" : 3,\n"
                                                   "  \"withWindowName\" : 2,\n"
                                                   "  \"screenRecording\" : false,\n"
                                                   "  \"accessibility\" : true,\n"
                                                   "  \"displays\" : [\n"
                                                   "    {\n"
                                                   "      \"x\" : 0,\n"
                                                   "      \"y\" : 0,\n"
                                                   "      \"w\" : 1512,\n"
                                                   "      \"h\" : 982\n"
                                                   "    },\n"
                                                   "    {\n"
                                                   "      \"x\" : 1512,\n"
                                                   "      \"y\" : -201,\n"
                                                   "      \"w\" : 1920,\n"
                                                   "      \"h\" : 1080\n"
                                                   "    }\n"
                                                   "  ],\n"
                                                   "  \"ourItems\" : [\n"
                                                   "    {\n"
                                                   "      \"x\" : 1300,\n"
                                                   "      \"y\" : 0,\n"
                                                   "      \"w\" : 30,\n"
                                                   "      \"name\" : \"quillet.separator\"\n"
                                                   "    }\n"
                                                   "  ],\n"
                                                   "  \"items\" : [\n"
                                                   "    {\n"
                                                   "      \"x\" : 1400,\n"
                                                   "      \"y\" : 0,\n"
                                                   "      \"w\" : 30,\n"
                                                   "      \"ownerName\" : \"Quillet\",\n"
                                                   "      \"windowName\" : null,\n"
                                                   "      \"bundleID\" : null\n"
                                                   "    },\n"
                                                   "    {\n"
                                                   "      \"x\" : 1300,\n"
                                                   "      \"y\" : 0,\n"
                                                   "      \"w\" : 30,\n"
                                                   "      \"ownerName\" : \"Control Center\",\n"
                                                   "      \"windowName\" : \"quillet.separator\",\n"
                                                   "      \"bundleID\" : \"quillet.separator\"\n"
                                                   "    },\n"
                                                   "    {\n"
                                                   "      \"x\" : 1200,\n"
                                                   "      \"y\" : 0,\n"
                                                   "      \"w\" : 30,\n"
                                                   "      \"ownerName\" : \"Control Center\",\n"
                                                   "      \"windowName\" : \"Item-0\",\n"
                                                   "      \"bundleID\" : null\n"
                                                   "    }\n"
                                                   "  ]\n"
                                                   "}");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(MenuBarDebugTest, OurItemsNamesAnUntitledOwnWindowWithTheEmptyString) {
    MenuBarItem untitled;
    untitled.frame = makeRect(1, 2, 3, 4);
    untitled.bundleID = std::string(kBundleIdentifier);
    auto document = MenuBarDebug::rawDocument({{untitled}, {}, false, false});
    ASSERT_TRUE(document);
    auto parsed = nlohmann::json::parse(*document);
    EXPECT_EQ(parsed["ourItems"][0]["name"], "");
}

TEST_F(MenuBarDebugTest, AFailedDumpIsOnlyALogLine) {
    sim::SimulatedProcess process({"Quillet", "--dump-raw"}, kOwnPID);
    process.makeUnwritable("/locked");
    MenuBarDebug debug(enumerator, mac, mac, process, log);
    debug.dumpRaw("/locked/quillet-raw.json");
    EXPECT_THAT(process.files(), IsEmpty());
    EXPECT_THAT(process.standardOutput(), IsEmpty());
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_THAT(log.lines()[0], HasSubstr("Quillet: --dump-raw failed to write "
                                          "/locked/quillet-raw.json: You don\u2019t have"));
}

TEST_F(MenuBarDebugTest, ACoordinateNoIntegerCanHoldFailsTheListingWithoutOutput) {
    mac.addWindow(
        SimulatedMac::statusItemWindow(1, makeRect(1e19, 0, 30, 24), 9, "Control Center", "Clock"));
    EXPECT_THAT(run({"Quillet", "--list-items"}), IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre("Quillet: --list-items JSON serialization failed"));
}

TEST(CommandLine, ListingWinsAndOnlyWholeArgumentsCount) {
    using CommandLine::launchMode;
    EXPECT_EQ(launchMode({"/Applications/Quillet.app/Contents/MacOS/Quillet", "--dump-raw",
                          "--list-items"}),
              LaunchMode::listItems);
    EXPECT_EQ(launchMode({"Quillet", "--dump-raw"}), LaunchMode::dumpRaw);
    EXPECT_EQ(launchMode({"Quillet", "--list-items-now"}), LaunchMode::agent);
    EXPECT_EQ(launchMode({"Quillet", "--raw"}), LaunchMode::agent);
    EXPECT_EQ(launchMode({"--list-items"}), LaunchMode::listItems); // the program path counts
}

} // namespace
} // namespace quillet
