#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/app/ZoneCheck.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <vector>

namespace quillet::apptests {

inline constexpr std::array kEveryDropModel{
    sim::DropModel::slotAtRelease, sim::DropModel::liveByPointer, sim::DropModel::liveByLeadingEdge,
    sim::DropModel::liveByWholeItem, sim::DropModel::nearestGapAtRelease};

// What the user has allowed Quillet. Switched on the simulated Mac before launch; a dimension of
// the stories so that every check holds with and without each permission.
struct Permissions {
    bool accessibility = true;
    bool screenRecording = true;
};

// Quillet running on a simulated Mac with a user doing things to it at set times: launching,
// quitting and relaunching applications, switching profiles, pressing the hot key, hovering,
// clicking the toggle, holding the mouse button. Everything happens on the virtual clock, so
// a step can fall in the middle of a drag. The checks read the simulated bar itself.
class BarStory {
public:
    using Item = sim::SimulatedMac::AppItem;
    using Application = sim::SimulatedMac::Application;

    BarStory(sim::MenuBarNaming naming, sim::DropModel dropModel, Permissions permissions) {
        mac().setNaming(naming);
        mac().setDropModel(dropModel);
        mac().setAccessibilityTrusted(permissions.accessibility);
        mac().setScreenRecordingAllowed(permissions.screenRecording);
    }

    sim::SimulatedMac& mac() { return quillet.world.mac; }
    sim::VirtualScheduler& scheduler() { return quillet.world.scheduler; }
    AppPreferences& preferences() { return quillet.services.preferences(); }
    ControlItemManager& manager() { return *quillet.delegate.controlManager; }

    // Staging, before launch: like macOS, each new item appears at the left end, so the bar is
    // built from right to left.
    void addRunning(const Application& app, const std::vector<Item>& items) {
        mac().installApplication(app.bundleID, "/Applications/" + app.name + ".app");
        for (auto item = items.rbegin(); item != items.rend(); ++item) {
            mac().addApplicationItem(app, item->title, item->width);
        }
    }
    void launchQuillet() { quillet.delegate.applicationDidFinishLaunching(); }

    // Steps, each at `time` on the virtual clock.
    void at(Duration time, std::function<void()> step) {
        scheduler().postAfter(time - scheduler().now(), std::move(step));
    }
    void launchAt(Duration time, Application app, std::vector<Item> items) {
        at(time, [this, app, items] {
            mac().installApplication(app.bundleID, "/Applications/" + app.name + ".app");
            mac().launchApplication(app, items);
        });
    }
    void quitAt(Duration time, std::string bundleID) {
        at(time, [this, bundleID] {
            for (Pid pid : mac().runningProcesses(bundleID)) {
                mac().quitApplication(pid);
            }
        });
    }
    void pressHotKeyAt(Duration time) {
        at(time, [this] {
            const HotKeyOption key = preferences().hotKey();
            quillet.world.hotKeys.press(keyCode(key), modifierMask(key));
        });
        ++userTriggers_;
    }
    void clickToggleAt(Duration time) {
        at(time, [this] {
            if (auto toggle = mac().ownStatusItem(std::string(ControlItemManager::kToggleName))) {
                toggle->click(ButtonEvent{2, 0});
            }
        });
        ++userTriggers_;
    }
    // The pointer onto the right half of the menu bar, and away again after `stay` (never when
    // `stay` is zero).
    void hoverAt(Duration time, Duration stay) {
        at(time, [this] { quillet.world.pointer.moveTo(overMenuBar()); });
        if (stay > Duration{0}) {
            at(time + stay, [this] { quillet.world.pointer.moveTo(awayFromMenuBar()); });
        }
        ++userTriggers_;
    }
    void holdButtonAt(Duration time, Duration length) {
        at(time, [this] { mac().setLeftButtonHeld(true); });
        at(time + length, [this] { mac().setLeftButtonHeld(false); });
    }
    void activateAt(Duration time, std::string bundleID) {
        at(time, [this, bundleID] { mac().activateApplication(bundleID); });
    }
    void switchProfileAt(Duration time, std::string name) {
        at(time, [this, name] { preferences().switchProfile(name); });
    }

    // The pointer somewhere below the menu bar, `x` points from the left.
    void pointerAwayAt(Duration time, double x) {
        at(time, [this, x] { quillet.world.pointer.moveTo({x, awayFromMenuBar().y}); });
    }

    // Runs until Quillet has nothing more to do.
    void settle() { scheduler().runUntilIdle(); }
    int userTriggers() const { return userTriggers_; }
    const std::vector<std::string>& logLines() const { return quillet.world.log.lines(); }

    // Checks, once idle.
    std::vector<std::string> zoneProblems() {
        return sim::ZoneCheck::problems(mac().menuBar(), preferences().sectionByBundleID(),
                                        mac().frontmostBundleID(), mac().screenRecordingAllowed());
    }
    // What is in view matches the bar's state: the toggle and the visible zone always, the hidden
    // zone only while expanded, the always-hidden zone never unless all is revealed.
    std::vector<std::string> visibilityProblems() {
        std::vector<std::string> problems;
        const auto order = mac().menuBarOrder();
        const WindowID separator = ownWindow(ControlItemManager::kSeparatorName);
        const WindowID border = ownWindow(ControlItemManager::kAlwaysSeparatorName);
        const auto separatorAt = std::find(order.begin(), order.end(), separator);
        const auto borderAt = std::find(order.begin(), order.end(), border);
        // A variable length: the always-hidden zone is revealed too.
        const bool allRevealed =
            mac().ownStatusItem(std::string(ControlItemManager::kAlwaysSeparatorName))->length() <
            0;
        for (auto window = order.begin(); window != order.end(); ++window) {
            const auto* item = mac().menuBar().item(*window);
            if (item->kind == sim::MenuBarModel::Kind::own && *window != border &&
                *window != separator && item->title != ControlItemManager::kToggleName) {
                continue;
            }
            const bool onScreen = mac().statusItemFrame(*window)->maxX() > 0;
            const bool shouldShow = window > separatorAt ||
                                    (manager().isExpanded() && (window > borderAt || allRevealed));
            if (onScreen != shouldShow && *window != border && *window != separator) {
                problems.push_back(item->title + (onScreen ? " is in view" : " is out of view"));
            }
        }
        return problems;
    }
    bool isExpanded() { return manager().isExpanded(); }
    // The toggle is there to click: on the screen, not pushed off it.
    bool toggleInView() {
        return mac().statusItemFrame(ownWindow(ControlItemManager::kToggleName))->maxX() > 0;
    }
    WindowID ownWindow(std::string_view name) {
        return mac().ownStatusItem(std::string(name))->window();
    }

    // Command-drags posted so far.
    std::size_t drags() {
        const auto& events = mac().input().events();
        return std::count_if(events.begin(), events.end(), [](const auto& posted) {
            return posted.event.type == MouseEventType::leftMouseDown;
        });
    }

    // The arrangement the application makes at launch and on a profile switch.
    void arrangeAgain() {
        auto hidden = AppDelegate::set(preferences(), MenuBarSection::hidden);
        hidden.merge(AppDelegate::set(preferences(), MenuBarSection::dynamic));
        manager().arrangeAndReapply(hidden,
                                    AppDelegate::set(preferences(), MenuBarSection::alwaysHidden));
        settle();
    }

private:
    Point overMenuBar() {
        const Rect display = mac().mainDisplayBounds();
        return {display.width() * 0.75, display.height() - 5};
    }
    Point awayFromMenuBar() {
        const Rect display = mac().mainDisplayBounds();
        return {display.width() * 0.75, display.height() / 2};
    }

    sim::SimulatedQuillet quillet;
    int userTriggers_ = 0;
};

} // namespace quillet::apptests
