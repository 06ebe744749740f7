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

constexpr Pid kOwnPID = 4242;
const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};

// A macOS 27 Mac whose bar holds Slack (pushed into the overflow by our 680-point separator),
// Dropbox, our toggle, the battery, Control Center and the clock.
class HostedListing : public ::testing::Test {
protected:
    HostedListing() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setMenuBarKind(BarKind::hosted);
        mac.setFramesLag(false);
        mac.setAppMenusWidth(600);
        mac.setControlCenterPID(612);
        mac.setRunningProcesses("com.apple.controlcenter", {612});
        mac.addControlCenterAndClock();
        mac.addSystemItem("Battery", 42);
        toggle = mac.createStatusItem(30);
        mac.installApplication(kDropbox.bundleID, "/Applications/Dropbox.app");
        mac.addApplicationItem(kDropbox, "Item-0", 30);
        separator = mac.createStatusItem(680);
        mac.addApplicationItem(kSlack, "Item-0", 30);
    }

    nlohmann::json run(std::vector<std::string> arguments, int macOS = 27) {
        sim::SimulatedProcess process(std::move(arguments), kOwnPID);
        process.setOperatingSystemMajorVersion(macOS);
        MenuBarDebug debug(enumerator, hosted, mac, mac, process, log);
        CommandLine::runDiagnosticMode(CommandLine::launchMode(process.arguments()), debug,
                                       process);
        const std::string written =
            process.files().empty() ? process.standardOutput() : process.files().begin()->second;
        return nlohmann::json::parse(written);
    }

    static std::vector<std::string> labels(const nlohmann::json& listing) {
        std::vector<std::string> result;
        for (const auto& item : listing.at("items")) {
            result.push_back(item.at("label"));
        }
        return result;
    }

    SimulatedMac mac;
    ItemEnumerator enumerator{mac, mac, mac};
    HostedItemEnumerator hosted{mac, mac, mac};
    sim::SimulatedLog log;
    std::shared_ptr<StatusItem> toggle;
    std::shared_ptr<StatusItem> separator;
};

TEST_F(HostedListing, ListsTheHostsTreeWithItsOverflowAndWithoutOurItems) {
    const auto listing = run({"Quillet", "--list-items"});
    EXPECT_EQ(listing.at("source"), "accessibility");
    EXPECT_THAT(labels(listing),
                ElementsAre("Slack", "Dropbox", "Battery", "Control Center", "Clock"));
    const auto& slack = listing.at("items")[0];
    EXPECT_EQ(slack.at("inOverflow"), true);
    EXPECT_TRUE(slack.at("x").is_null());
    EXPECT_EQ(slack.at("bundleID"), kSlack.bundleID);
    const auto& dropbox = listing.at("items")[1];
    EXPECT_EQ(dropbox.at("x"), 1512 - 87 - 33 - 42 - 30 - 30);
    EXPECT_EQ(dropbox.at("windowID"), 0);
    EXPECT_EQ(listing.at("items")[4].at("identifier"), "com.apple.menuextra.clock");
}

TEST_F(HostedListing, AnUnreadableTreeListsNothingAndSaysSo) {
    mac.setAccessibilityTrusted(false);
    const auto listing = run({"Quillet", "--list-items"});
    EXPECT_EQ(listing.at("count"), 0);
    EXPECT_EQ(listing.at("source"), "accessibility");
    EXPECT_THAT(log.lines(),
                ElementsAre("Quillet: the menu bar host's accessibility tree could not be read"));
}

TEST_F(HostedListing, ThePerItemBarIsStillListedFromTheWindowList) {
    mac.setMenuBarKind(BarKind::perItemWindows);
    const auto listing = run({"Quillet", "--list-items"}, 26);
    EXPECT_FALSE(listing.contains("source"));
    EXPECT_THAT(labels(listing), ElementsAre("Battery", "Control Center", "Clock"));
}

} // namespace
} // namespace quillet
