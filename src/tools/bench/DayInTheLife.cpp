// A virtual day on a busy Mac: thousands of windows, forty menu bar items, and the user doing
// something every few seconds. Resident memory must not grow from the first hour to the last,
// and every item must be in its zone at the end.

#include "tools/bench/BenchQuillet.hpp"
#include "tools/bench/Figures.hpp"

#include "core/prefs/HotKeyOption.hpp"

#include <array>
#include <cstdio>
#include <optional>
#include <random>

namespace quillet::bench {

namespace {

using namespace std::chrono_literals;
using Application = sim::SimulatedMac::Application;

constexpr int kItems = 40;
constexpr int kWaitingApps = 6;
constexpr int kSamples = 24;
constexpr std::array kSections{MenuBarSection::visible, MenuBarSection::hidden,
                               MenuBarSection::alwaysHidden, MenuBarSection::dynamic};

struct DayLength {
    Duration length;
    int windows;
};

class Day {
public:
    explicit Day(DayLength day) : day_(day) {}

    void stage() {
        addWindows();
        std::vector<Application> apps;
        for (int i = 0; i < kItems; ++i) {
            apps.push_back(benchApplication(i));
        }
        addRunning(quillet_.mac(), apps);
        running_ = apps;
        for (int i = 0; i < kWaitingApps; ++i) {
            waiting_.push_back(benchApplication(kItems + i));
        }
        const SectionRules home = randomRules();
        quillet_.preferences().setProfiles({{"Home", home}, {"Work", randomRules()}});
        quillet_.preferences().setSectionByBundleID(home);
    }

    void live() {
        quillet_.launch();
        quillet_.settle();
        std::printf("  Heap less the simulator's record of posted events and pauses (which grows "
                    "with every "
                    "drag by design) is what Quillet and the fixed stage hold.\n");
        std::printf("  virtual time  resident MB  heap less record MB  its growth KB  drags so "
                    "far  recorded events  log lines\n");
        const Duration sampleEvery = day_.length / kSamples;
        Duration nextSample = quillet_.world.scheduler.now() + sampleEvery;
        const Duration end = quillet_.world.scheduler.now() + day_.length;
        while (quillet_.world.scheduler.now() < end) {
            quillet_.world.scheduler.advance(std::chrono::milliseconds(pick(1000, 6000)));
            happen();
            if (quillet_.world.scheduler.now() >= nextSample) {
                sample();
                nextSample += sampleEvery;
            }
        }
        quillet_.settle();
        const auto outcome = quillet_.outcome();
        std::printf("  %d events; at the end %zu items out of their zone (aim 0)%s%s; %zu timers "
                    "pending once idle\n",
                    events_, outcome.zoneProblems.size(),
                    outcome.zoneProblems.empty() ? "" : ", first: ",
                    outcome.zoneProblems.empty() ? "" : outcome.zoneProblems.front().c_str(),
                    outcome.pendingOnceIdle);
    }

private:
    // Ordinary application windows, far more than status items, in the window list.
    void addWindows() {
        for (int i = 0; i < day_.windows; ++i) {
            auto window = sim::SimulatedMac::statusItemWindow(
                static_cast<WindowID>(100000 + i), makeRect(i % 1200, 100 + i % 300, 800, 600),
                3000 + i % 97, "App", "Document");
            window[WindowKey::layer] = {std::int64_t{0}};
            quillet_.mac().addWindow(std::move(window));
        }
    }

    SectionRules randomRules() {
        SectionRules rules;
        for (int i = 0; i < kItems + kWaitingApps; ++i) {
            if (pick(0, 2) > 0) {
                rules[benchApplication(i).bundleID] = kSections[pick(0, 3)];
            }
        }
        return rules;
    }

    // One thing the user does, picked at random; profile switches, which rearrange the whole
    // bar, are the rarest.
    void happen() {
        ++events_;
        auto& mac = quillet_.mac();
        auto& world = quillet_.world;
        switch (pick(0, 40)) {
        case 0:
            quillet_.preferences().switchProfile(pick(0, 1) ? "Home" : "Work");
            break;
        case 1:
        case 2:
            if (!waiting_.empty()) {
                const Application app = take(waiting_);
                mac.installApplication(app.bundleID, "/Applications/" + app.name + ".app");
                mac.launchApplication(app, {{app.bundleID, 24}});
                running_.push_back(app);
            }
            break;
        case 3:
        case 4:
            if (!running_.empty()) {
                const Application app = take(running_);
                mac.quitApplication(app.pid);
                waiting_.push_back(app);
            }
            break;
        case 5:
        case 6:
            if (!running_.empty()) {
                // A relaunch is a new process with a new window, a moment after the quit.
                Application& app = running_[pick(0, int(running_.size()) - 1)];
                mac.quitApplication(app.pid);
                app.pid = nextPid_++;
                world.scheduler.postAfter(std::chrono::milliseconds(pick(200, 2000)), [&mac, app] {
                    mac.launchApplication(app, {{app.bundleID, 24}});
                });
            }
            break;
        case 7:
        case 8:
        case 9: {
            const HotKeyOption key = quillet_.preferences().hotKey();
            world.hotKeys.press(keyCode(key), modifierMask(key));
            break;
        }
        case 10:
        case 11:
        case 12: {
            const Rect display = mac.mainDisplayBounds();
            world.pointer.moveTo({display.width() * 0.75, display.height() - 5});
            world.scheduler.postAfter(
                std::chrono::milliseconds(pick(300, 3000)), [&world, display] {
                    world.pointer.moveTo({display.width() * 0.75, display.height() / 2});
                });
            break;
        }
        default:
            // Mostly the user switching between applications, and moving the pointer.
            if (!running_.empty() && pick(0, 1) == 0) {
                mac.activateApplication(running_[pick(0, int(running_.size()) - 1)].bundleID);
            } else {
                world.pointer.moveTo({double(pick(0, 1500)), double(pick(100, 900))});
            }
            break;
        }
        world.scheduler.runDue();
    }

    void sample() {
        const auto& input = quillet_.mac().input();
        const double heap =
            static_cast<double>(heapBytesInUse()) - static_cast<double>(recordedInputBytes(input));
        if (!firstHeap_) {
            firstHeap_ = heap;
        }
        std::printf(
            "  %10.1f h  %11.1f  %19.2f  %13.1f  %14zu  %15zu  %9zu\n",
            std::chrono::duration<double, std::ratio<3600>>(quillet_.world.scheduler.now()).count(),
            static_cast<double>(residentBytes()) / 1048576.0, heap / 1048576.0,
            (heap - *firstHeap_) / 1024.0, quillet_.outcome().dragsPosted, input.events().size(),
            quillet_.world.log.lines().size());
    }

    Application take(std::vector<Application>& apps) {
        const auto at = apps.begin() + pick(0, int(apps.size()) - 1);
        const Application app = *at;
        apps.erase(at);
        return app;
    }
    int pick(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }

    DayLength day_;
    BenchQuillet quillet_;
    std::mt19937 random_{20261124};
    std::vector<Application> running_;
    std::vector<Application> waiting_;
    Pid nextPid_ = 9000;
    int events_ = 0;
    std::optional<double> firstHeap_;
};

} // namespace

void printDayInTheLife(const FigureOptions& options) {
    const DayLength day = options.brief ? DayLength{std::chrono::hours(1), 1000}
                                        : DayLength{std::chrono::hours(24), 10000};
    std::printf("\n== A day in the life: %.0f virtual hours, %d windows, %d items, something "
                "every 1 to 6 s\n",
                std::chrono::duration<double, std::ratio<3600>>(day.length).count(), day.windows,
                kItems);
    Day run(day);
    run.stage();
    run.live();
}

} // namespace quillet::bench
