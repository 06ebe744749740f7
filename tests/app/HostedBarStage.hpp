#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/engine/HostedLengths.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <optional>
#include <string>
#include <vector>

namespace quillet::apptests {

// Quillet on a simulated Mac that hosts its menu bar as macOS 27 does (or, for comparison, on the
// per-item bar), with the user's own Command-drags, the hot key and the checks the hosted stories
// share: where an item stands on the host's bar, and whether any item of ours is long enough to be
// dropped.
class HostedBarStage {
public:
    using Application = sim::SimulatedMac::Application;

    explicit HostedBarStage(BarKind kind,
                            std::vector<Rect> displays = {makeRect(0, 0, 1512, 982)}) {
        mac().setDisplays(std::move(displays));
        mac().setMenuBarKind(kind);
        quillet.world.process.setOperatingSystemMajorVersion(kind == BarKind::hosted ? 27 : 26);
    }

    sim::SimulatedMac& mac() { return quillet.world.mac; }
    sim::VirtualScheduler& scheduler() { return quillet.world.scheduler; }
    AppPreferences& preferences() { return quillet.services.preferences(); }
    ControlItemManager& manager() { return *quillet.delegate.controlManager; }
    sim::SimulatedAlerts& alerts() { return quillet.world.alerts; }
    const std::vector<std::string>& logLines() const { return quillet.world.log.lines(); }

    // Before launch: like macOS, each new item appears at the left end.
    WindowID addApplication(const Application& app, double width = 30) {
        mac().installApplication(app.bundleID, "/Applications/" + app.name + ".app");
        return mac().addApplicationItem(app, app.bundleID, width);
    }
    void launch() {
        quillet.delegate.applicationDidFinishLaunching();
        settle();
    }
    void settle() { scheduler().runUntilIdle(); }
    void pressHotKey() {
        const HotKeyOption key = preferences().hotKey();
        quillet.world.hotKeys.press(keyCode(key), modifierMask(key));
        settle();
    }
    void activate(const std::string& bundleID) {
        mac().activateApplication(bundleID);
        settle();
    }

    WindowID own(std::string_view name) { return mac().ownStatusItem(std::string(name))->window(); }
    // Where `window` stands on the main display's bar: nullopt in the overflow (or dropped).
    std::optional<Rect> slot(WindowID window) {
        for (const auto& each : mac().menuBar().hostedLayout(mac().mainDisplayBounds())) {
            if (each.window == window) {
                return each.frame;
            }
        }
        return std::nullopt;
    }
    // The user's own Command-drags, which work on either bar.
    void dragRightOf(WindowID item, WindowID anchor) {
        mac().userCommandDrags(item, slot(anchor)->maxX() - 1);
    }
    void dragLeftOf(WindowID item, WindowID anchor) {
        mac().userCommandDrags(item, slot(anchor)->minX() + 1);
    }

    // The longest length of any item of ours, and the length at which the bar drops an item.
    double longestOwnLength() {
        double longest = 0;
        for (const auto* item : mac().menuBar().itemsByWindow()) {
            if (item->kind == sim::MenuBarModel::Kind::own) {
                longest = std::max(longest, item->length);
            }
        }
        return longest;
    }
    double dropThreshold() { return hostedDropThreshold(mac().displays()); }

private:
    sim::SimulatedQuillet quillet;
};

} // namespace quillet::apptests
