#include "core/app/AppDelegate.hpp"

#include "core/app/CommandLine.hpp"
#include "core/app/MenuBarPresence.hpp"
#include "core/app/Notices.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/engine/OwnStatusItems.hpp"
#include "core/engine/SpacerManager.hpp"
#include "core/engine/UpdaterManager.hpp"
#include "core/engine/VisibleItemEnforcer.hpp"
#include "core/ports/ApplicationShell.hpp"
#include "core/ports/ProcessContext.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/triggers/ActiveAppMonitor.hpp"
#include "core/triggers/EventMonitorHub.hpp"
#include "core/triggers/HotKeyManager.hpp"

namespace quillet {

namespace {

// Does `action` with the manager if it still exists; callbacks never keep it alive.
template <class Action>
std::function<void()> withManager(std::weak_ptr<ControlItemManager> weak, Action action) {
    return [weak, action] {
        if (auto manager = weak.lock()) {
            action(*manager);
        }
    };
}

Task<> afterDelay(Scheduler& scheduler, Duration delay, std::function<void()> action) {
    const bool completed = co_await sleep(scheduler, delay);
    if (!completed) {
        co_return;
    }
    action();
}

} // namespace

AppDelegate::AppDelegate(Services& services, Hooks hooks)
    : services_(services), hooks_(std::move(hooks)) {}

AppDelegate::~AppDelegate() = default;

std::set<std::string> AppDelegate::set(const AppPreferences& preferences, MenuBarSection section) {
    std::set<std::string> keys;
    for (const auto& [key, ruled] : preferences.sectionByBundleID()) {
        if (ruled == section) {
            keys.insert(key);
        }
    }
    return keys;
}

void AppDelegate::arrangeFromCurrentRules() {
    const AppPreferences& preferences = services_.preferences();
    auto hidden = set(preferences, MenuBarSection::hidden);
    // Auto items wait in the hidden zone; the front application monitor shows them.
    hidden.merge(set(preferences, MenuBarSection::dynamic));
    controlManager->arrangeAndReapply(std::move(hidden),
                                      set(preferences, MenuBarSection::alwaysHidden));
}

void AppDelegate::applicationDidFinishLaunching() {
    const PlatformPorts& ports = services_.ports();
    ports.application.setActivationPolicy(ActivationPolicy::accessory);
    AppPreferences& preferences = services_.preferences();

    ActiveAppMonitor& monitor = services_.activeAppMonitor();
    controlManager = ControlItemManager::make(
        {ports.scheduler, services_.ownStatusItems(), ports.windows, ports.displays,
         ports.workspace, ports.accessibility, ports.menuBarHost, ports.input,
         services_.launchAtLogin(), preferences, services_.enforcer(), ports.log,
         services_.notices(), services_.ownPID(), ports.process.operatingSystemMajorVersion(),
         hooks_.showSettings, hooks_.startKeyboardNav,
         [&monitor] { monitor.showAgainAfterArrangement(); }});
    services_.publish(controlManager);
    controlManager->watchToggleClicks(ports.pointer);
    presence = std::make_unique<MenuBarPresence>(MenuBarPresence::Dependencies{
        .scheduler = ports.scheduler,
        .displays = ports.displays,
        .workspace = ports.workspace,
        .menuBarHost = ports.menuBarHost,
        .notices = services_.notices(),
        .ownPID = services_.ownPID(),
        .ownItemFrames = [items = controlManager.get()] { return items->controlItemFrames(); }});
    presence->checkAfterLaunch();
    const std::weak_ptr<ControlItemManager> manager = controlManager;

    services_.updater();

    // Requests rather than settings: while a layout job runs they wait for it (a request for
    // the state the bar is in already changes nothing).
    eventHub = std::make_unique<EventMonitorHub>(
        ports.pointer, ports.displays, ports.scheduler,
        withManager(manager, [](auto& items) { items.requestExpanded(true); }),
        withManager(manager, [](auto& items) { items.requestExpanded(false); }), [manager] {
            auto items = manager.lock();
            return items && items->isMovingItems();
        });
    cancellables.push_back(preferences.autoRehideChanges().subscribe(
        [hub = eventHub.get()](bool reveal) { reveal ? hub->start() : hub->stop(); }));

    hotKey = std::make_unique<HotKeyManager>(
        ports.hotKeys, withManager(manager, [](auto& items) { items.toggle(); }));
    cancellables.push_back(
        preferences.hotKeyChanges().subscribe([keys = hotKey.get()](HotKeyOption option) {
            keys->unregister();
            keys->registerHotKey(keyCode(option), modifierMask(option));
        }));

    cancellables.push_back(preferences.spacerCountChanges().subscribe(
        [&spacers = services_.spacers()](std::int64_t count) { spacers.setCount(count); }));

    monitor.start();
    cancellables.push_back(preferences.sectionByBundleIDChanges().subscribeToChanges(
        [&monitor](const SectionRules&) { monitor.refresh(); }));

    services_.enforcer().start();

    cancellables.push_back(
        preferences.activeProfileChanges().subscribeToChanges([this](const std::string&) {
            if (controlManager) {
                arrangeFromCurrentRules();
            }
        }));
    arrangeFromCurrentRules();

    handleLaunchArguments();
}

void AppDelegate::handleLaunchArguments() {
    const auto& arguments = services_.ports().process.arguments();
    if (CommandLine::hasFlag(arguments, CommandLine::kOpenSettings) && hooks_.showSettings) {
        hooks_.showSettings();
    }
    if (CommandLine::hasFlag(arguments, CommandLine::kNavSelfTest) &&
        hooks_.runNavigationSelfTest) {
        selfTestTask_ =
            TaskHandle::spawn(services_.ports().scheduler,
                              afterDelay(services_.ports().scheduler, kNavigationSelfTestDelay,
                                         hooks_.runNavigationSelfTest));
    }
}

void AppDelegate::applicationWillTerminate() {
    if (eventHub) {
        eventHub->stop();
    }
    if (hotKey) {
        hotKey->unregister();
    }
    services_.activeAppMonitor().stop();
    services_.enforcer().stop();
}

} // namespace quillet
