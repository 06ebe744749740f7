// The promise of the whole engine, tried on random menu bars: once Quillet is idle, every item
// is in the zone its rule gives, whatever happened meanwhile and however the menu bar drops a
// dragged item. Without Screen Recording no status item has a title: a rule is kept for every
// item that can still be told apart (by its owner before macOS 26, by the frame Accessibility
// gives for its application), and no rule can reach the others, which stay in view (see
// ZoneCheck). The control items are in order and the toggle in view either way.

#include "app/BarStory.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>

namespace quillet::apptests {
namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;

constexpr std::array kNamings{sim::MenuBarNaming::macOS26, sim::MenuBarNaming::perApplication};
// Permissions the user may have given; add a dimension here and every run covers it.
constexpr std::array kPermissions{Permissions{true, true}, Permissions{false, true},
                                  Permissions{true, false}, Permissions{false, false}};
constexpr int kSeedsPerCase = 3;

// System items Quillet may move and hide.
constexpr std::array<const char*, 10> kSystemItems{
    "WiFi",    "Battery",      "Bluetooth",  "Sound",   "NowPlaying",
    "Display", "StageManager", "FocusModes", "Hearing", "ScreenMirroring"};
constexpr std::array kSections{MenuBarSection::visible, MenuBarSection::hidden,
                               MenuBarSection::alwaysHidden, MenuBarSection::dynamic};

// One random run: a bar of 2 to 30 items, rules and two profiles over them, applications yet to
// launch, and up to eight things the user does at random times.
class RandomRun {
public:
    RandomRun(std::uint32_t seed, sim::MenuBarNaming naming, sim::DropModel model,
              Permissions permissions)
        : random_(seed), story_(naming, model, permissions) {}

    BarStory& story() { return story_; }

    void stage() {
        const int items = pick(2, 30);
        std::vector<std::string> systemNames(kSystemItems.begin(), kSystemItems.end());
        std::shuffle(systemNames.begin(), systemNames.end(), random_);
        for (int i = 0; i < items; ++i) {
            if (chance(0.25) && !systemNames.empty()) {
                story_.mac().addSystemItem(systemNames.back(), pick(20, 36));
                maybeRule("sys:" + systemNames.back());
                systemNames.pop_back();
            } else {
                auto [app, appItems] = newApplication();
                story_.addRunning(app, appItems);
                running_.push_back({app, appItems});
            }
        }
        for (int i = pick(0, 3); i > 0; --i) {
            waiting_.push_back(newApplication());
        }
        SectionRules other;
        for (const auto& [key, section] : rules_) {
            other[key] = kSections[pick(0, 3)];
        }
        story_.preferences().setProfiles({{"Home", rules_}, {"Work", other}});
        story_.preferences().setSectionByBundleID(rules_);
        if (chance(0.3) && !running_.empty()) {
            story_.mac().setFrontmostBundleID(any(running_).first.bundleID);
        }
    }

    void disturb() {
        for (int i = pick(0, 8); i > 0; --i) {
            const Duration time = std::chrono::milliseconds(pick(0, 9000));
            switch (pick(0, 8)) {
            case 0:
                if (!waiting_.empty()) {
                    story_.launchAt(time, waiting_.back().first, waiting_.back().second);
                    running_.push_back(waiting_.back());
                    waiting_.pop_back();
                }
                break;
            case 1:
                if (!running_.empty()) {
                    story_.quitAt(time, any(running_).first.bundleID);
                }
                break;
            case 2:
                if (!running_.empty()) {
                    // A relaunched application is a new process with new windows.
                    auto [app, items] = any(running_);
                    story_.quitAt(time, app.bundleID);
                    app.pid = nextPid_++;
                    story_.launchAt(time + std::chrono::milliseconds(pick(0, 2000)), app, items);
                }
                break;
            case 3:
                story_.switchProfileAt(time, chance(0.5) ? "Home" : "Work");
                break;
            case 4:
                story_.pressHotKeyAt(time);
                break;
            case 5:
                story_.hoverAt(time, std::chrono::milliseconds(pick(100, 1500)));
                break;
            case 6:
                story_.clickToggleAt(time);
                break;
            case 7:
                story_.holdButtonAt(time, std::chrono::milliseconds(pick(200, 3000)));
                break;
            default:
                story_.activateAt(time, running_.empty() || chance(0.3)
                                            ? std::string("com.apple.finder")
                                            : any(running_).first.bundleID);
                break;
            }
        }
    }

    // Once all is quiet: the pointer away, a fresh arrangement (whose drags post pointer moves
    // over the menu bar), the bar opened by the hot key, the pointer moved elsewhere below the
    // menu bar. Hover tracking fooled by our own drags would close the bar now.
    void openAfterOwnDrags() {
        story_.pointerAwayAt(story_.scheduler().now(), 200);
        story_.settle();
        story_.arrangeAgain();
        if (!story_.isExpanded()) {
            story_.pressHotKeyAt(story_.scheduler().now());
            story_.settle();
        }
        story_.pointerAwayAt(story_.scheduler().now() + 100ms, 700);
        story_.settle();
    }
    // Then the pointer onto the menu bar, where it stays or from where it leaves again.
    bool hoverLast() {
        const bool stays = chance(0.5);
        story_.hoverAt(story_.scheduler().now() + 100ms, stays ? Duration{0} : 300ms);
        story_.settle();
        return stays;
    }

    std::string description() const {
        std::ostringstream text;
        text << rules_.size() << " rules, " << running_.size() << " running apps";
        return text.str();
    }

private:
    using App = std::pair<BarStory::Application, std::vector<BarStory::Item>>;

    int pick(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
    bool chance(double p) { return std::bernoulli_distribution(p)(random_); }
    const App& any(const std::vector<App>& apps) {
        return apps[static_cast<std::size_t>(pick(0, static_cast<int>(apps.size()) - 1))];
    }

    void maybeRule(const std::string& key) {
        if (chance(0.6)) {
            rules_[key] = kSections[pick(0, 3)];
        }
    }

    // An application titled by its bundle identifier (which rules can name), one or two items;
    // or one whose item has no autosave name ("Item-0"), which no rule can name.
    App newApplication() {
        const int n = nextApp_++;
        BarStory::Application app{"com.example.app" + std::to_string(n), "App" + std::to_string(n),
                                  nextPid_++};
        if (chance(0.2)) {
            return {app, {{"Item-0", static_cast<double>(pick(16, 36))}}};
        }
        maybeRule(app.bundleID);
        std::vector<BarStory::Item> items{{app.bundleID, static_cast<double>(pick(16, 36))}};
        if (chance(0.15)) {
            items.push_back({app.bundleID, static_cast<double>(pick(16, 36))});
        }
        return {app, items};
    }

    std::mt19937 random_;
    BarStory story_;
    SectionRules rules_;
    std::vector<App> running_;
    std::vector<App> waiting_;
    int nextApp_ = 0;
    Pid nextPid_ = 800;
};

class ZoneGuarantee : public ::testing::TestWithParam<std::tuple<sim::DropModel, int>> {};

TEST_P(ZoneGuarantee, OnceIdleEveryItemIsInTheZoneItsRuleGives) {
    const auto [model, seedBase] = GetParam();
    // Every case its own bars, rules and events: one seed per run across the whole suite.
    auto seed = static_cast<std::uint32_t>(seedBase * 1000 + static_cast<int>(model) * 100);
    for (const auto naming : kNamings) {
        for (const auto permissions : kPermissions) {
            for (int i = 0; i < kSeedsPerCase; ++i, ++seed) {
                RandomRun run(seed, naming, model, permissions);
                run.stage();
                run.story().launchQuillet();
                run.disturb();
                run.story().settle();
                BarStory& story = run.story();
                if (!permissions.accessibility) {
                    // Nothing can move: nothing is tried, and the toggle stays within reach.
                    EXPECT_EQ(story.drags(), 0u) << "seed " << seed;
                    EXPECT_TRUE(story.toggleInView()) << "seed " << seed;
                    // Once granted, the next application switch arranges the bar.
                    story.mac().setAccessibilityTrusted(true);
                    story.mac().activateApplication("com.apple.finder");
                    story.settle();
                }
                SCOPED_TRACE("seed " + std::to_string(seed) + ", naming " +
                             std::to_string(static_cast<int>(naming)) + ", accessibility " +
                             std::to_string(permissions.accessibility) + ", screen recording " +
                             std::to_string(permissions.screenRecording) + ": " +
                             run.description() + "\n" + story.mac().renderMenuBar());
                EXPECT_THAT(story.zoneProblems(), IsEmpty());
                EXPECT_THAT(story.visibilityProblems(), IsEmpty());
                EXPECT_LT(story.scheduler().now(), 5min) << "work that does not settle";

                // With everything in place, an arrangement drags only what its own steps drag:
                // the always-separator to the left end and each always-hidden item back past it.
                std::size_t alwaysHidden = 0;
                for (WindowID window : story.mac().menuBarOrder()) {
                    if (window == story.ownWindow(ControlItemManager::kAlwaysSeparatorName)) {
                        break;
                    }
                    alwaysHidden += story.mac().menuBar().item(window)->movable ? 1 : 0;
                }
                const std::size_t before = story.drags();
                run.openAfterOwnDrags();
                EXPECT_EQ(story.drags() - before, alwaysHidden == 0 ? 0 : 1 + alwaysHidden);
                EXPECT_THAT(story.zoneProblems(), IsEmpty());
                EXPECT_TRUE(story.isExpanded()) << "closed by our own drags' pointer moves";
                const bool pointerStays = run.hoverLast();
                EXPECT_EQ(story.isExpanded(), pointerStays);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryDropModel, ZoneGuarantee,
                         ::testing::Combine(::testing::ValuesIn(kEveryDropModel),
                                            ::testing::Values(1, 2)));

} // namespace
} // namespace quillet::apptests
