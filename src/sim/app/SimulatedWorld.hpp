#pragma once

#include "core/app/Services.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/SimulatedProcess.hpp"
#include "sim/VirtualScheduler.hpp"
#include "sim/app/SimulatedApplication.hpp"
#include "sim/nav/SimulatedPanels.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"
#include "sim/settings/SimulatedPrivacyPrompts.hpp"
#include "sim/settings/SimulatedSettingsWindows.hpp"
#include "sim/triggers/SimulatedHotKeys.hpp"
#include "sim/triggers/SimulatedPointer.hpp"

#include <string>
#include <vector>

namespace quillet::sim {

// Everything of a simulated Mac that a running Quillet touches, on one virtual clock: a
// 1512 × 982 macOS 26 display with the clock and Control Center, and Quillet as process 4242.
// The stage is empty otherwise; add other applications' items through `mac`. Whoever builds
// Quillet's services on it runs the scheduler until idle before destroying them, so that no
// pending job outlives what it refers to.
struct SimulatedWorld {
    static constexpr Pid kQuilletPID = 4242;

    explicit SimulatedWorld(std::vector<std::string> arguments = {"Quillet"})
        : process(std::move(arguments), kQuilletPID) {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setOwnProcess(kQuilletPID, "Quillet");
        mac.addControlCenterAndClock();
        mac.keyboard().setFocus(
            [this] { return application.isActive() && panels.keyPanel() != nullptr; });
    }
    // The keyboard asks this world where the keys go.
    SimulatedWorld(const SimulatedWorld&) = delete;
    SimulatedWorld& operator=(const SimulatedWorld&) = delete;

    // The ports over this world, with `defaults` as the user defaults.
    PlatformPorts ports(KeyValueStore& userDefaults) {
        return {.scheduler = scheduler,
                .application = application,
                .process = process,
                .windows = mac,
                .displays = mac,
                .workspace = mac,
                .accessibility = privacyPrompts,
                .menuBarHost = mac,
                .statusBar = mac,
                .input = mac,
                .hotKeys = hotKeys,
                .pointer = pointer,
                .defaults = userDefaults,
                .loginItem = loginItem,
                .updater = updater,
                .alerts = alerts,
                .log = log,
                .keys = mac.keyboard(),
                .panels = panels,
                .screenCapture = privacyPrompts,
                .settingsWindows = settingsWindows,
                .symbols = mac};
    }
    PlatformPorts ports() { return ports(defaults); }

    // Makes this a Mac on macOS `major`, with the hosted menu bar from 27 on. Before launch.
    void runMacOS(int major) {
        process.setOperatingSystemMajorVersion(major);
        mac.setMenuBarKind(major >= kFirstHostedMacOS ? BarKind::hosted : BarKind::perItemWindows);
    }

    VirtualScheduler scheduler;
    SimulatedMac mac{scheduler};
    SimulatedPointer pointer{mac};
    SimulatedHotKeys hotKeys;
    MemoryKeyValueStore defaults;
    SimulatedProcess process;
    SimulatedLog log;
    SimulatedApplication application;
    SimulatedLoginItem loginItem;
    SimulatedUpdater updater;
    SimulatedAlerts alerts;
    SimulatedPanels panels;
    SimulatedPrivacyPrompts privacyPrompts{mac, scheduler};
    SimulatedSettingsWindows settingsWindows;
};

} // namespace quillet::sim
