#include "core/ports/StatusBarHost.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/app/ZoneCheck.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using sim::SimulatedMac;

constexpr Pid kOwnPID = 4242;
constexpr Pid kControlCenterPID = 612;
const SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
const SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 702};

// A 1512-point macOS 27 display whose app menus keep 400 points: clock and Control Center
// (1392..1512), the battery (1350..1392), Dropbox (1320..1350), Slack (1290..1320), and our
// separator (variable, 10 points) left of them all.
class HostedMenuBar : public ::testing::Test {
protected:
    HostedMenuBar() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setMenuBarKind(BarKind::hosted);
        mac.setFramesLag(false);
        mac.setAppMenusWidth(400);
        mac.setControlCenterPID(kControlCenterPID);
        mac.addControlCenterAndClock();
        battery = mac.addSystemItem("Battery", 42);
        dropbox = mac.addApplicationItem(kDropbox, "Item-0", 30);
        slack = mac.addApplicationItem(kSlack, "Item-0", 30);
        separator = mac.createStatusItem(kVariableStatusItemLength);
    }

    std::vector<HostedItem> tree() {
        return mac.hostedItems(250ms).value_or(std::vector<HostedItem>{});
    }

    std::optional<HostedItem> slotOf(Pid owner) {
        auto all = tree();
        auto found = std::find_if(all.begin(), all.end(),
                                  [&](const HostedItem& item) { return item.owner == owner; });
        return found == all.end() ? std::nullopt : std::optional(*found);
    }

    SimulatedMac mac;
    WindowID battery = 0;
    WindowID dropbox = 0;
    WindowID slack = 0;
    std::shared_ptr<StatusItem> separator;
};

TEST_F(HostedMenuBar, TheTreeHasOneSlotPerItemWithUntitledMenuExtrasForTheSystemsOwn) {
    const auto all = tree();
    ASSERT_EQ(all.size(), 6u);
    EXPECT_EQ(all[0], (HostedItem{kOwnPID, "", makeRect(1280, 0, 10, 24), 0}));
    EXPECT_EQ(all[2], (HostedItem{kDropbox.pid, "", makeRect(1320, 0, 30, 24), 0}));
    EXPECT_EQ(all[3].identifier, "com.apple.menuextra.battery");
    EXPECT_EQ(all[4].identifier, "com.apple.menuextra.controlcenter");
    EXPECT_EQ(all[5], (HostedItem{kControlCenterPID, "com.apple.menuextra.clock",
                                  makeRect(1425, 0, 87, 24), 0}));
    EXPECT_EQ(mac.renderMenuBar(), "<Item-0> [Slack] [Dropbox] [Battery] | [BentoBox] [Clock]");
}

TEST_F(HostedMenuBar, ALengthReachingHalfTheDisplayWithItsChromeDropsTheItemAndHidesNothing) {
    separator->setLength(739);
    EXPECT_TRUE(slotOf(kOwnPID));
    separator->setLength(740); // 740 + 16 reaches 756, half of 1512
    EXPECT_FALSE(slotOf(kOwnPID));
    EXPECT_EQ(separator->length(), 740) << "the owner is not told";
    EXPECT_EQ(slotOf(kSlack.pid)->frame, makeRect(1290, 0, 30, 24));
    EXPECT_EQ(
        mac.renderMenuBar(),
        "{<Item-0 740>} [Slack] [Dropbox] [Battery] | [BentoBox] [Clock] (app menus blanked)");
    separator->setLength(kVariableStatusItemLength);
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(1280, 0, 10, 24));
}

TEST_F(HostedMenuBar, FramesAreMissingAtFirstAndLagOneReadAfterAChange) {
    mac.setFramesLag(true);
    EXPECT_EQ(slotOf(kOwnPID)->frame, std::nullopt);
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(1280, 0, 10, 24));
    separator->setLength(700);
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(1280, 0, 10, 24)) << "the frame before";
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(590, 0, 700, 24));
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(590, 0, 700, 24));
}

TEST_F(HostedMenuBar, SyntheticCommandDragsTakeThePointerAndMoveNothingButTheUsersOwnDo) {
    const auto before = mac.menuBarOrder();
    EventSource source;
    const std::vector<std::pair<std::uint32_t, std::int64_t>> names{{51, dropbox}};
    mac.post(source, {MouseEventType::leftMouseDown, {1335, 10}, EventFlags::command, names});
    mac.post(source, {MouseEventType::leftMouseDragged, {1200, 10}, EventFlags::command, names});
    mac.post(source, {MouseEventType::leftMouseUp, {1200, 10}, EventFlags::command, names});
    EXPECT_EQ(mac.menuBarOrder(), before);
    EXPECT_EQ(mac.ignoredSyntheticDrags(), 1);
    EXPECT_EQ(mac.eventLocation()->x, 1200);

    ASSERT_TRUE(mac.userCommandDrags(dropbox, 1316)); // on the right half of our separator
    EXPECT_EQ(mac.renderMenuBar(), "<Item-0> [Dropbox] [Slack] [Battery] | [BentoBox] [Clock]");
}

TEST_F(HostedMenuBar, EachDisplayDropsByItsOwnWidthAndTellsOfDisplayChanges) {
    int changes = 0;
    mac.addObserver(WorkspaceEvent::didChangeScreenParameters, [&] { ++changes; });
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, -300, 3840, 2160)});
    mac.setDisplays({makeRect(0, 0, 1512, 982), makeRect(1512, -300, 3840, 2160)});
    EXPECT_EQ(changes, 1);
    separator->setLength(800);
    std::vector<std::size_t> ours;
    for (const HostedItem& item : tree()) {
        if (item.owner == kOwnPID) {
            ours.push_back(item.displayIndex);
            EXPECT_EQ(item.frame, makeRect(5352 - 222 - 800, -300, 800, 24));
        }
    }
    EXPECT_EQ(ours, std::vector<std::size_t>{1});
    mac.setHostedFramesInMainDisplayCoordinates(true);
    EXPECT_EQ(slotOf(kOwnPID)->frame, makeRect(3840 - 222 - 800, 0, 800, 24));
}

TEST_F(HostedMenuBar, NoTreeWithoutTrustOrFromAHostThatDoesNotAnswer) {
    mac.setApplicationHung(SimulatedMac::kMenuBarHostPID, true);
    EXPECT_EQ(mac.hostedItems(250ms), std::nullopt);
    EXPECT_EQ(mac.accessibilityWaited(), 250ms);
    mac.setApplicationHung(SimulatedMac::kMenuBarHostPID, false);
    mac.setAccessibilityTrusted(false);
    EXPECT_EQ(mac.hostedItems(250ms), std::nullopt);
    mac.setMenuBarKind(BarKind::perItemWindows);
    mac.setAccessibilityTrusted(true);
    EXPECT_EQ(mac.hostedItems(250ms), std::nullopt) << "no host on the per-item bar";
}

// Slack's second item sits between the separators and its first right of them, Slack's rule is
// Hide, and the window list withholds titles: only the hosted bar's tree tells whose the second
// item is, so only there must it be hidden.
TEST(HostedZoneCheck, EveryItemCanBeRuledOnTheHostedBarWithoutTitles) {
    for (bool hosted : {false, true}) {
        sim::MenuBarModel bar;
        bar.setGeometry(makeRect(0, 0, 1512, 982), 24);
        bar.setHosted(hosted);
        bar.setAutosaveName(bar.addOwn(30), "quillet.toggle");
        sim::MenuBarModel::Item slack;
        slack.pid = kSlack.pid;
        slack.appName = kSlack.name;
        slack.bundleID = kSlack.bundleID;
        slack.length = 30;
        bar.add(slack);
        bar.setAutosaveName(bar.addOwn(10), "quillet.separator");
        bar.add(slack);
        bar.setAutosaveName(bar.addOwn(10), "quillet.alwaysSeparator");
        const auto problems = sim::ZoneCheck::problems(
            bar, {{kSlack.bundleID, MenuBarSection::hidden}}, std::nullopt, false);
        if (hosted) {
            EXPECT_THAT(problems, ::testing::ElementsAre("Slack is visible, its rule says hidden"));
        } else {
            EXPECT_THAT(problems, ::testing::ElementsAre("Slack is hidden, its rule says visible",
                                                         "Slack is visible, its rule says hidden"));
        }
    }
}

// Over random bars on one to three displays 1024 to 6016 points wide: on every display an item is
// in the tree exactly when its length and chrome stay under half the width; the shown ones are
// packed from the right edge without overlap and never reach into the app menus, and the ones in
// the overflow are the leftmost.
TEST(HostedMenuBarProperty, EveryDisplayDropsLongItemsAndOverflowsFromTheLeft) {
    std::mt19937 random(27);
    for (int run = 0; run < 200; ++run) {
        SimulatedMac mac;
        std::vector<Rect> displays;
        double x = 0;
        for (int d = std::uniform_int_distribution(1, 3)(random); d > 0; --d) {
            const double width = std::uniform_int_distribution(1024, 6016)(random);
            displays.push_back(makeRect(x, 0, width, width * 0.6));
            x += width;
        }
        mac.setDisplays(displays);
        mac.setMenuBarKind(BarKind::hosted);
        mac.setFramesLag(false);
        const double menus = std::uniform_int_distribution(100, 900)(random);
        mac.setAppMenusWidth(menus);
        mac.addControlCenterAndClock();
        std::vector<std::shared_ptr<StatusItem>> ours;
        std::map<WindowID, double> widths{{1000, 87}, {1001, 33}};
        for (int i = std::uniform_int_distribution(1, 12)(random); i > 0; --i) {
            const double length = std::uniform_int_distribution(0, 3)(random) == 0
                                      ? std::uniform_int_distribution(300, 3100)(random)
                                      : std::uniform_int_distribution(16, 120)(random);
            ours.push_back(mac.createStatusItem(length));
            widths[std::static_pointer_cast<sim::SimStatusItem>(ours.back())->window()] = length;
        }
        const auto tree = *mac.hostedItems(250ms);
        for (std::size_t d = 0; d < displays.size(); ++d) {
            const Rect& display = displays[d];
            std::vector<double> kept;
            for (WindowID window : mac.menuBarOrder()) {
                if (widths[window] + 16 < display.width() / 2) {
                    kept.push_back(widths[window]);
                }
            }
            std::vector<HostedItem> slots;
            std::copy_if(tree.begin(), tree.end(), std::back_inserter(slots),
                         [&](const HostedItem& item) { return item.displayIndex == d; });
            ASSERT_EQ(slots.size(), kept.size()) << "run " << run << " display " << d;
            double right = display.maxX();
            for (std::size_t i = slots.size(); i-- > 0;) {
                if (!slots[i].frame) {
                    EXPECT_LT(right - kept[i], display.minX() + menus) << "run " << run;
                    EXPECT_TRUE(
                        std::none_of(slots.begin(), slots.begin() + static_cast<long>(i),
                                     [](const HostedItem& s) { return s.frame.has_value(); }));
                    break;
                }
                EXPECT_EQ(slots[i].frame->maxX(), right) << "run " << run;
                EXPECT_GE(slots[i].frame->minX(), display.minX() + menus) << "run " << run;
                right = slots[i].frame->minX();
            }
        }
    }
}

} // namespace
} // namespace quillet
