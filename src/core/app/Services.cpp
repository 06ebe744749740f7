#include "core/app/Services.hpp"

#include "core/app/Notices.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/engine/LaunchAtLogin.hpp"
#include "core/engine/OwnStatusItems.hpp"
#include "core/engine/SpacerManager.hpp"
#include "core/engine/UpdaterManager.hpp"
#include "core/engine/VisibleItemEnforcer.hpp"
#include "core/nav/KeyboardNavController.hpp"
#include "core/ports/ProcessContext.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/settings/SettingsWindowController.hpp"
#include "core/triggers/ActiveAppMonitor.hpp"

namespace quillet {

namespace {

template <class T, class Make> T& lazily(std::unique_ptr<T>& slot, Make make) {
    if (!slot) {
        slot = make();
    }
    return *slot;
}

} // namespace

Services::Services(PlatformPorts ports) : ports_(ports) {}

// Out of line, where every owned type is complete.
Services::~Services() = default;

Pid Services::ownPID() const {
    return ports_.process.processIdentifier();
}

AppPreferences& Services::preferences() {
    return lazily(preferences_,
                  [&] { return std::make_unique<AppPreferences>(ports_.defaults, &ports_.log); });
}

LaunchAtLogin& Services::launchAtLogin() {
    return lazily(launchAtLogin_,
                  [&] { return std::make_unique<LaunchAtLogin>(ports_.loginItem, ports_.log); });
}

UpdaterManager& Services::updater() {
    return lazily(updater_, [&] { return std::make_unique<UpdaterManager>(ports_.updater); });
}

Notices& Services::notices() {
    return lazily(notices_, [&] {
        return std::make_unique<Notices>(ports_.alerts, ports_.workspace, ports_.log);
    });
}

OwnStatusItems& Services::ownStatusItems() {
    return lazily(ownStatusItems_, [&] {
        return std::make_unique<OwnStatusItems>(ports_.statusBar, ports_.displays);
    });
}

OwnItemFrames Services::ownItemFrames() {
    return [&items = ownStatusItems()] { return items.windowServerFrames(); };
}

SpacerManager& Services::spacers() {
    return lazily(spacers_, [&] { return std::make_unique<SpacerManager>(ownStatusItems()); });
}

VisibleItemEnforcer& Services::enforcer() {
    return lazily(enforcer_, [&] {
        return std::make_unique<VisibleItemEnforcer>(VisibleItemEnforcer::Dependencies{
            ports_.scheduler, ports_.workspace, ports_.windows, ports_.displays, preferences(),
            ownPID(), controlItemManagerLookup(), ownItemFrames()});
    });
}

ActiveAppMonitor& Services::activeAppMonitor() {
    return lazily(activeAppMonitor_, [&] {
        return std::make_unique<ActiveAppMonitor>(ports_.workspace, preferences(),
                                                  controlItemManagerLookup());
    });
}

KeyboardNavController& Services::keyboardNav() {
    return lazily(keyboardNav_, [&] {
        return std::make_unique<KeyboardNavController>(KeyboardNavController::Dependencies{
            ports_.scheduler, ports_.windows, ports_.displays, ports_.workspace,
            ports_.accessibility, ports_.menuBarHost, ports_.keys, ports_.panels,
            ports_.application, ports_.input, ports_.process, controlItemManagerLookup(),
            ownItemFrames()});
    });
}

SettingsWindowController& Services::settingsWindow() {
    return lazily(settingsWindow_, [&] {
        return std::make_unique<SettingsWindowController>(SettingsWindowController::Dependencies{
            ports_.scheduler, ports_.application, ports_.displays, ports_.settingsWindows,
            ports_.process, preferences(), launchAtLogin(), ports_.accessibility,
            ports_.screenCapture, ports_.windows, ports_.workspace, ports_.symbols,
            ports_.menuBarHost, controlItemManagerLookup(), ownItemFrames()});
    });
}

std::shared_ptr<ControlItemManager> Services::controlItemManager() const {
    return controlItemManager_.lock();
}

void Services::publish(const std::shared_ptr<ControlItemManager>& manager) {
    controlItemManager_ = manager;
}

std::function<std::shared_ptr<ControlItemManager>()> Services::controlItemManagerLookup() const {
    return [this] { return controlItemManager(); };
}

} // namespace quillet
