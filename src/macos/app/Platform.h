#pragma once

#include "core/app/Services.hpp"
#include "core/engine/GuardedUpdater.hpp"
#include "macos/app/AppKitAlertPresenter.h"
#include "macos/app/AppKitApplicationShell.h"
#include "macos/app/AppKitProcessContext.h"
#include "macos/app/GCDScheduler.h"
#include "macos/app/NSLogSink.h"
#include "macos/engine/AppKitStatusBarHost.h"
#include "macos/engine/CGInputInjector.h"
#include "macos/engine/SMLoginItem.h"
#include "macos/engine/SparkleUpdater.h"
#include "macos/menubar/AXAccessibilityReader.h"
#include "macos/menubar/AXMenuBarHostReader.h"
#include "macos/menubar/AppKitWorkspace.h"
#include "macos/menubar/CGDisplayGeometry.h"
#include "macos/menubar/CGScreenCapture.h"
#include "macos/menubar/CGWindowListSource.h"
#include "macos/nav/AppKitPanelHost.h"
#include "macos/nav/NSEventKeyMonitor.h"
#include "macos/prefs/UserDefaultsStore.h"
#include "macos/settings/AppKitSettingsWindowHost.h"
#include "macos/triggers/CarbonHotKeyRegistrar.h"
#include "macos/triggers/NSEventPointerMonitor.h"

namespace quillet::macos {

// The live adapters, one of each, for the whole process. Everything built on the Mac takes its
// ports from here by reference; tests build the core types with simulated ports instead.
struct Platform {
    // Built on first use, which main makes before anything else runs.
    static Platform& shared();

    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;

    // The ports a running Quillet is built on.
    PlatformPorts ports();

    // Declared after what they are given, so that each is built after it and destroyed before it.
    NSLogSink log;
    AppKitProcessContext process;
    GCDScheduler scheduler;
    AppKitApplicationShell application;
    CGWindowListSource windows;
    CGDisplayGeometry displays;
    AppKitWorkspace workspace;
    AXAccessibilityReader accessibility;
    AXMenuBarHostReader menuBarHost;
    CGScreenCapture screenCapture;
    CGInputInjector input;
    CarbonHotKeyRegistrar hotKeys;
    NSEventPointerMonitor pointer;
    UserDefaultsStore defaults;
    SMLoginItem loginItem;
    AppKitAlertPresenter alerts;
    SparkleUpdater sparkle;
    // What the app and the "Check for Updates…" entry reach: the core decides whether Sparkle
    // runs at all.
    GuardedUpdater updater{sparkle, alerts, log};
    AppKitStatusBarHost statusBar{updater};
    NSEventKeyMonitor keys;
    AppKitPanelHost panels;
    AppKitSettingsWindowHost settingsWindows;
};

} // namespace quillet::macos
