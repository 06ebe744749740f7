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

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

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
        MenuBarDebug debug(enumerator, hosted, mac, mac, process, log);
        EXPECT_TRUE(CommandLine::runDiagnosticMode(CommandLine::launchMode(process.arguments()),
                                                   debug, process));
        files = process.files();
        return process.standardOutput();
    }

    SimulatedMac mac;
    ItemEnumerator enumerator{mac, mac, mac};
    HostedItemEnumerator hosted{mac, mac, mac};
    sim::SimulatedLog log;
    std::map<std::string, std::string> files;
};

// Titles and owner names with quotes, backslashes, slashes, control characters and characters
// of every UTF-8 length come back from the listing exactly as the window list held them.
TEST_F(MenuBarDebugTest, AnyTextRoundTripsThroughTheListing) {
    const std::vector<std::string> pieces{
        "\"",   "\\",   "/", "\n", "\t", "\b",     "\f",     "\r",     std::string(1, '\0'), "\x01",
        "\x1f", "\x7f", "a", "Z",  " ",  "\u00e9", "\u20ac", "\u2028", "\U0001F600"};
    std::mt19937 random(20261124);
    auto text = [&] {
        std::string result;
        for (auto length = random() % 8 + 1; length > 0; --length) {
            result += pieces[random() % pieces.size()];
        }
        return result;
    };
    std::map<WindowID, std::pair<std::string, std::string>> written; // owner name, title
    for (WindowID id = 1; id <= 100; ++id) {
        written[id] = {text(), text()};
        mac.addWindow(SimulatedMac::statusItemWindow(id, makeRect(id * 14.0, 0, 12, 24), 9,
                                                     written[id].first, written[id].second));
    }
    const auto listing = nlohmann::json::parse(run({"Quillet", "--list-items", "--raw"}));
    ASSERT_EQ(listing.at("items").size(), written.size());
    for (const auto& item : listing.at("items")) {
        const auto& [ownerName, title] = written.at(item.at("windowID").get<WindowID>());
        EXPECT_EQ(item.at("ownerName"), ownerName);
        EXPECT_EQ(item.at("windowName"), title);
    }
}

TEST_F(MenuBarDebugTest, TheDumpGoesToTheHomeFolderWithoutAWord) {
    mac.addWindow(
        SimulatedMac::statusItemWindow(1, makeRect(1400, 0, 30, 24), 9, "Control Center", "Clock"));
    EXPECT_THAT(run({"Quillet", "--dump-raw", "--raw"}), IsEmpty());
    ASSERT_TRUE(files.contains("/Users/me/quillet-raw.json"));
    EXPECT_EQ(nlohmann::json::parse(files["/Users/me/quillet-raw.json"])["rawCount"], 1);
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
    MenuBarDebug debug(enumerator, hosted, mac, mac, process, log);
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
