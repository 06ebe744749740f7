#pragma once

#include "core/app/Services.hpp"
#include "core/prefs/MenuBarSection.hpp"
#include "core/support/Subscription.hpp"
#include "core/support/Task.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quillet {

class AppPreferences;
class ControlItemManager;
class EventMonitorHub;
class HotKeyManager;
class MenuBarPresence;

// Creates the long-lived objects of the hiding engine and the reveal triggers at launch, wires
// the user's preferences to them in a fixed order, and tears the triggers down at quit. It holds
// the control item manager strongly and hands every callback only a weak reference.
class AppDelegate {
public:
    // What the settings window and keyboard navigation offer the launch sequence and the
    // toggle's menu. Either may be empty while that part of the app is not there.
    struct Hooks {
        std::function<void()> showSettings;
        std::function<void()> startKeyboardNav;
        std::function<void()> runNavigationSelfTest;
    };

    static constexpr Duration kNavigationSelfTestDelay = std::chrono::seconds(2);

    AppDelegate(Services& services, Hooks hooks);
    ~AppDelegate();
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    // The rule keys whose section is `section`.
    static std::set<std::string> set(const AppPreferences& preferences, MenuBarSection section);

    std::shared_ptr<ControlItemManager> controlManager;
    std::unique_ptr<EventMonitorHub> eventHub;
    std::unique_ptr<MenuBarPresence> presence;
    std::unique_ptr<HotKeyManager> hotKey;
    std::vector<Subscription> cancellables;

private:
    void arrangeFromCurrentRules();
    void handleLaunchArguments();

    Services& services_;
    Hooks hooks_;
    TaskHandle selfTestTask_;
};

} // namespace quillet
