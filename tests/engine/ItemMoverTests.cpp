#include "core/engine/ItemMover.hpp"
#include "sim/SimulatedMac.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using ItemMover::Side;
using sim::SimulatedMac;
using ::testing::ElementsAre;

constexpr Pid kDropboxPID = 701;
constexpr Pid kNotionPID = 702;

// Right to left: clock 1425..1512, Control Center 1392..1425, Dropbox 1362..1392, our separator
// 1340..1362 and Notion 1260..1340, wide enough to take a drop on either half.
struct MoverScene {
    MoverScene() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setPointerLocation({700, 500}); // 482 below the top
        mac.addControlCenterAndClock();
        dropbox = mac.addApplicationItem({"com.getdropbox.dropbox", "Dropbox", kDropboxPID},
                                         "Item-0", 30);
        separatorItem = mac.createStatusItem(kVariableStatusItemLength);
        separatorItem->setAutosaveName("quillet.separator");
        separatorItem->setImage(
            SymbolImage{"ellipsis", "Quillet", true, std::nullopt, std::nullopt});
        separator = mac.ownStatusItem("quillet.separator")->window();
        notion = mac.addApplicationItem({"notion.id", "Notion", kNotionPID}, "Item-0", 80);
        clock = mac.menuBarOrder().back();
    }

    SimulatedMac mac;
    std::shared_ptr<StatusItem> separatorItem;
    WindowID dropbox = 0;
    WindowID separator = 0;
    WindowID notion = 0;
    WindowID clock = 0;
};

class ItemMoverTest : public ::testing::Test, public MoverScene {
protected:
    bool move(WindowID item, Side side, WindowID anchor, int attempts = 6) {
        return ItemMover::move(mac, mac, item, side, anchor, attempts);
    }

    Rect frame(WindowID window) { return *mac.statusItemFrame(window); }
    const std::vector<sim::SimulatedInput::PostedEvent>& events() { return mac.input().events(); }
    // One press per attempt.
    std::size_t presses() {
        return std::count_if(events().begin(), events().end(), [](const auto& posted) {
            return posted.event.type == MouseEventType::leftMouseDown;
        });
    }

    // The settle pauses that end the attempts.
    std::vector<std::chrono::microseconds> settlePauses() {
        std::vector<std::chrono::microseconds> result;
        for (const auto& pause : mac.input().pauses()) {
            if (pause.length >= 70000us) {
                result.push_back(pause.length);
            }
        }
        return result;
    }

    void expectCursorRestoredOnce() {
        EXPECT_EQ(mac.input().cursorHides(), 1);
        EXPECT_EQ(mac.input().cursorShows(), 1);
        EXPECT_THAT(mac.input().warps(), ElementsAre(Point{700, 482}));
    }
};

// Found by type, not position: how many steps a drag takes is the mover's own business.
TEST_F(ItemMoverTest, LandsBesideTheAnchorAndTheCursorComesBack) {
    ASSERT_TRUE(move(dropbox, Side::left, separator));
    EXPECT_EQ(frame(dropbox).maxX(), frame(separator).minX()); // not beyond Notion
    EXPECT_EQ(mac.renderMenuBar(), "[Notion] [Dropbox] <separator> | [BentoBox] [Clock]");
    expectCursorRestoredOnce();

    // One Command-drag naming Dropbox to the window server: moved there, pressed, dragged,
    // released where the pointer last went, with time for the window server to follow.
    const std::vector<std::pair<std::uint32_t, std::int64_t>> naming{
        {91, dropbox}, {92, dropbox}, {ItemMover::windowIDField, dropbox}};
    std::vector<sim::SimulatedInput::PostedEvent> drags;
    for (const auto& posted : events()) {
        EXPECT_EQ(posted.event.flags, EventFlags::command);
        EXPECT_EQ(posted.event.integerFields, naming);
        if (posted.event.type == MouseEventType::leftMouseDragged) {
            drags.push_back(posted);
        }
    }
    ASSERT_GE(events().size(), 4u);
    ASSERT_FALSE(drags.empty());
    const auto& moved = events()[0];
    const auto& pressed = events()[1];
    const auto& released = events()[events().size() - 2];
    EXPECT_EQ(moved.event.type, MouseEventType::mouseMoved);
    EXPECT_EQ(pressed.event.type, MouseEventType::leftMouseDown);
    EXPECT_EQ(released.event.type, MouseEventType::leftMouseUp);
    EXPECT_EQ(events().back().event.type, MouseEventType::leftMouseUp);
    EXPECT_EQ(moved.event.location, pressed.event.location);
    EXPECT_EQ(released.event.location, drags.back().event.location);
    EXPECT_EQ(events().size(), drags.size() + 4);
    // Step by step towards the drop; the last drag follows the anchor, which moved meanwhile.
    for (std::size_t i = 1; i + 1 < drags.size(); ++i) {
        EXPECT_LT(drags[i].event.location.x, drags[i - 1].event.location.x) << i;
    }
    EXPECT_GE(pressed.time - moved.time, 20ms);
    EXPECT_GE(drags.front().time - pressed.time, 50ms);
    EXPECT_GE(released.time - drags.front().time, drags.size() * 14ms);
    EXPECT_THAT(settlePauses(), ElementsAre(70000us));
}

TEST_F(ItemMoverTest, AnItemAlreadyOnTheRequestedSideOnlyHidesAndShowsTheCursor) {
    EXPECT_TRUE(move(notion, Side::left, separator));
    EXPECT_TRUE(move(dropbox, Side::right, separator));
    EXPECT_TRUE(events().empty());
    EXPECT_EQ(mac.input().cursorHides(), 2);
    EXPECT_EQ(mac.input().cursorShows(), 2);
    EXPECT_EQ(mac.input().now(), 0us);
}

TEST_F(ItemMoverTest, ALimitOfZeroOnlyTellsWhereTheItemIs) {
    EXPECT_FALSE(move(dropbox, Side::left, separator, 0));
    EXPECT_TRUE(move(dropbox, Side::right, separator, 0));
    EXPECT_TRUE(events().empty());
}

TEST_F(ItemMoverTest, AUserHoldingTheButtonIsNeverFought) {
    mac.setLeftButtonHeld(true);
    EXPECT_FALSE(move(dropbox, Side::left, separator));
    EXPECT_TRUE(events().empty());
    expectCursorRestoredOnce();
}

TEST_F(ItemMoverTest, AButtonPressedDuringAnAttemptStopsBeforeTheNext) {
    // Right of the clock is out of reach: every attempt fails.
    mac.holdLeftButtonFrom(200ms);
    EXPECT_FALSE(move(dropbox, Side::right, clock));
    EXPECT_EQ(presses(), 1u);
    EXPECT_EQ(events().back().event.type, MouseEventType::leftMouseUp);
    EXPECT_THAT(settlePauses(), ElementsAre(70000us));
    expectCursorRestoredOnce();
}

TEST_F(ItemMoverTest, RetriesWithGrowingPausesUntilTheAttemptsRunOut) {
    EXPECT_FALSE(move(dropbox, Side::right, clock));
    EXPECT_EQ(presses(), 6u);
    EXPECT_THAT(settlePauses(),
                ElementsAre(70000us, 105000us, 157500us, 236250us, 354375us, 531562us));
    EXPECT_EQ(mac.renderMenuBar(), "[Notion] <separator> [Dropbox] | [BentoBox] [Clock]");
    expectCursorRestoredOnce();
}

TEST_F(ItemMoverTest, FramesThatLagMakeItTryAgainUntilTheLandingShows) {
    mac.setFramesLag(true);
    EXPECT_TRUE(move(dropbox, Side::left, separator));
    // The first release aimed at the separator's old place and landed beyond Notion; the second
    // attempt, seeing the old frames still, put Dropbox beside the separator.
    EXPECT_THAT(settlePauses(), ElementsAre(70000us, 105000us));
    EXPECT_EQ(presses(), 2u);
    EXPECT_EQ(frame(dropbox).maxX(), frame(separator).minX());
}

TEST_F(ItemMoverTest, AWindowThatVanishesGivesFalseOnTheNextAttempt) {
    mac.at(100ms, [this] { mac.quitApplication(kDropboxPID); });
    EXPECT_FALSE(move(dropbox, Side::left, separator));
    EXPECT_EQ(events().back().event.type, MouseEventType::leftMouseUp);
    EXPECT_THAT(settlePauses(), ElementsAre(70000us));
    EXPECT_EQ(mac.renderMenuBar(), "[Notion] <separator> | [BentoBox] [Clock]");
    expectCursorRestoredOnce();

    // A missing anchor fails at once.
    EXPECT_FALSE(move(notion, Side::right, dropbox));
    EXPECT_EQ(mac.input().cursorShows(), 2);
}

TEST_F(ItemMoverTest, WithoutTheGrantOrAnEventSourceTheCursorIsLeftAlone) {
    mac.setAccessibilityTrusted(false);
    EXPECT_FALSE(move(dropbox, Side::left, separator));
    EXPECT_EQ(mac.input().cursorHides(), 0);
    mac.setAccessibilityTrusted(true);

    mac.setEventSourceAvailable(false);
    EXPECT_FALSE(move(dropbox, Side::left, separator));
    EXPECT_EQ(mac.input().cursorHides(), 0);

    // Without a pointer location the cursor goes back to the origin.
    mac.setEventSourceAvailable(true);
    mac.setPointerEventAvailable(false);
    EXPECT_TRUE(move(dropbox, Side::left, separator));
    EXPECT_THAT(mac.input().warps(), ElementsAre(Point{0, 0}));
}

TEST_F(ItemMoverTest, LimitsOutsideZeroToTwentySevenStopTheProgram) {
    EXPECT_DEATH(move(dropbox, Side::left, separator, 28), "limit of 28 is outside 0...27");
    EXPECT_DEATH(move(dropbox, Side::left, separator, -1), "limit of -1 is outside 0...27");
}

// Fixed windows the mover reads but cannot lift.
class ItemMoverOverFixedWindowsTest : public ::testing::Test {
protected:
    ItemMoverOverFixedWindowsTest() { mac.setDisplays({makeRect(0, 0, 1512, 982)}); }

    void addWindow(WindowID window, Rect frame) {
        mac.addWindow(SimulatedMac::statusItemWindow(window, frame, 9, "App", "Item-0"));
    }

    SimulatedMac mac;
};

TEST_F(ItemMoverOverFixedWindowsTest, TheLandingTestAllowsTwoPoints) {
    addWindow(1, makeRect(1000, 0, 22, 24));
    addWindow(2, makeRect(972, 0, 30, 24));   // right edge 2 points over the anchor's left
    addWindow(3, makeRect(972.5, 0, 30, 24)); // 2.5 points over
    addWindow(4, makeRect(1020, 0, 30, 24));  // left edge 2 points inside the anchor's right
    addWindow(5, makeRect(1019.5, 0, 30, 24));
    EXPECT_TRUE(ItemMover::move(mac, mac, 2, Side::left, 1, 0));
    EXPECT_FALSE(ItemMover::move(mac, mac, 3, Side::left, 1, 0));
    EXPECT_TRUE(ItemMover::move(mac, mac, 4, Side::right, 1, 0));
    EXPECT_FALSE(ItemMover::move(mac, mac, 5, Side::right, 1, 0));
}

TEST_F(ItemMoverOverFixedWindowsTest, TheLastDragStepIsExactlyAtTheTarget) {
    // Coordinates for which start + (target - start) * 16 * 0.0625 misses the target.
    addWindow(1, makeRect(140.79, 0, 20, 24));
    addWindow(2, makeRect(977.39, 0, 48.38, 24));
    EXPECT_FALSE(ItemMover::move(mac, mac, 2, Side::left, 1, 1));
    const auto& events = mac.input().events();
    const auto released = std::find_if(events.begin(), events.end(), [](const auto& posted) {
        return posted.event.type == MouseEventType::leftMouseUp;
    });
    ASSERT_TRUE(released != events.begin() && released != events.end());
    const double target = 140.79 - 48.38 - 4.0;
    EXPECT_EQ(std::prev(released)->event.type, MouseEventType::leftMouseDragged);
    EXPECT_EQ(std::prev(released)->event.location.x, target);
    EXPECT_EQ(released->event.location, (Point{target, 12}));
}

} // namespace
} // namespace quillet
