#pragma once

#include "core/menubar/ItemEnumerator.hpp"
#include "core/ports/Geometry.hpp"

#include <functional>
#include <memory>

namespace quillet {

class AccessibilityReader;
class AlertPresenter;
class ActiveAppMonitor;
class AppPreferences;
class ApplicationShell;
class ControlItemManager;
class DisplayGeometry;
class HotKeyRegistrar;
class InputInjector;
class KeyMonitor;
class KeyValueStore;
class KeyboardNavController;
class LaunchAtLogin;
class LogSink;
class LoginItem;
class MenuBarHostReader;
class Notices;
class OwnStatusItems;
class PanelHost;
class PointerMonitor;
class ProcessContext;
class Scheduler;
class ScreenCapture;
class SettingsWindowController;
class SettingsWindowHost;
class SpacerManager;
class StatusBarHost;
class SymbolImages;
class Updater;
class UpdaterManager;
class VisibleItemEnforcer;
class WindowListSource;
class Workspace;

// What a running Quillet needs of its platform: the live adapters on a Mac, the simulated Mac in
// quillet-sim and the tests. Every reference outlives the services built on it.
struct PlatformPorts {
    Scheduler& scheduler;
    ApplicationShell& application;
    ProcessContext& process;
    WindowListSource& windows;
    DisplayGeometry& displays;
    Workspace& workspace;
    AccessibilityReader& accessibility;
    MenuBarHostReader& menuBarHost;
    StatusBarHost& statusBar;
    InputInjector& input;
    HotKeyRegistrar& hotKeys;
    PointerMonitor& pointer;
    KeyValueStore& defaults;
    LoginItem& loginItem;
    Updater& updater;
    AlertPresenter& alerts;
    LogSink& log;
    KeyMonitor& keys;
    PanelHost& panels;
    ScreenCapture& screenCapture;
    SettingsWindowHost& settingsWindows;
    SymbolImages& symbols;
};

// The process-wide objects of a running Quillet, each created on first use. One instance per
// process (and one per test), so that nothing is shared between tests.
class Services {
public:
    explicit Services(PlatformPorts ports);
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    const PlatformPorts& ports() const { return ports_; }
    Pid ownPID() const;

    AppPreferences& preferences();
    LaunchAtLogin& launchAtLogin();
    UpdaterManager& updater();
    Notices& notices();
    // Every status item Quillet's parts create goes through this.
    OwnStatusItems& ownStatusItems();
    SpacerManager& spacers();
    VisibleItemEnforcer& enforcer();
    ActiveAppMonitor& activeAppMonitor();
    KeyboardNavController& keyboardNav();
    SettingsWindowController& settingsWindow();

    // The control item manager, held weakly: its owner (the application delegate) publishes it
    // here, and whoever reaches it this way does nothing once it is gone.
    std::shared_ptr<ControlItemManager> controlItemManager() const;
    void publish(const std::shared_ptr<ControlItemManager>& manager);
    std::function<std::shared_ptr<ControlItemManager>()> controlItemManagerLookup() const;

private:
    OwnItemFrames ownItemFrames();

    PlatformPorts ports_;
    // Declared before what uses them, so that they are destroyed after it.
    std::unique_ptr<AppPreferences> preferences_;
    std::unique_ptr<LaunchAtLogin> launchAtLogin_;
    std::unique_ptr<UpdaterManager> updater_;
    std::unique_ptr<Notices> notices_;
    std::unique_ptr<OwnStatusItems> ownStatusItems_;
    std::unique_ptr<SpacerManager> spacers_;
    std::unique_ptr<VisibleItemEnforcer> enforcer_;
    std::unique_ptr<ActiveAppMonitor> activeAppMonitor_;
    std::unique_ptr<KeyboardNavController> keyboardNav_;
    std::unique_ptr<SettingsWindowController> settingsWindow_;
    std::weak_ptr<ControlItemManager> controlItemManager_;
};

} // namespace quillet
