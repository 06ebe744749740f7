#pragma once

#include "core/app/Notices.hpp"
#include "core/engine/ControlItemManager.hpp"
#include "core/engine/LaunchAtLogin.hpp"
#include "core/engine/VisibleItemEnforcer.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/VirtualScheduler.hpp"
#include "sim/app/SimulatedApplication.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet::enginetests {

// Applications with status items, each titled by its bundle identifier unless a test says
// otherwise.
inline const sim::SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox", 701};
inline const sim::SimulatedMac::Application kOnePassword{"com.1password.1password", "1Password",
                                                         702};
inline const sim::SimulatedMac::Application kDocker{"com.docker.docker", "Docker", 703};
inline const sim::SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack", 704};
inline const sim::SimulatedMac::Application kSpotify{"com.spotify.client", "Spotify", 705};
inline const sim::SimulatedMac::Application kWeather{"com.example.weather", "Weather", 706};
inline const sim::SimulatedMac::Application kStats{"eu.exelban.Stats", "Stats", 707};

// The login item as the service manager keeps it: registering enables it.
class SwitchableLoginItem : public LoginItem {
public:
    int status() const override { return status_; }
    std::optional<std::string> registerService() override {
        status_ = 1;
        return std::nullopt;
    }
    std::optional<std::string> unregisterService() override {
        status_ = 0;
        return std::nullopt;
    }
    int status_ = 0;
};

// A 1512-point Mac on macOS 26 with the clock and Control Center, Quillet's preferences, and
// (once started) its control item manager and enforcer, all on virtual time.
class EngineScene : public ::testing::Test {
protected:
    static constexpr Pid kOwnPID = 4242;

    EngineScene() {
        mac.setDisplays({makeRect(0, 0, 1512, 982)});
        mac.setOwnProcess(kOwnPID, "Quillet");
        mac.addControlCenterAndClock();
    }
    // Queued jobs run to their end, so that none is left holding the manager.
    ~EngineScene() override { scheduler.runUntilIdle(); }

    void startQuillet() {
        manager = ControlItemManager::make({.scheduler = scheduler,
                                            .statusBar = mac,
                                            .windows = mac,
                                            .displays = mac,
                                            .workspace = mac,
                                            .accessibility = mac,
                                            .menuBarHost = mac,
                                            .input = mac,
                                            .launchAtLogin = launchAtLogin,
                                            .preferences = preferences,
                                            .enforcer = enforcer,
                                            .log = log,
                                            .notices = notices,
                                            .ownPID = kOwnPID,
                                            .openSettings = [this] { ++settingsOpened; },
                                            .startKeyboardNav = [this] { ++navigationsStarted; },
                                            .arranged = {}});
    }

    std::shared_ptr<sim::SimStatusItem> control(std::string_view name) const {
        return mac.ownStatusItem(std::string(name));
    }
    WindowID controlWindow(std::string_view name) const { return control(name)->window(); }

    // The zone an item sits in, read from the order of the bar.
    MenuBarSection zoneOf(WindowID window) const {
        const auto order = mac.menuBarOrder();
        auto position = [&](WindowID w) { return std::find(order.begin(), order.end(), w); };
        if (position(window) < position(controlWindow(ControlItemManager::kAlwaysSeparatorName))) {
            return MenuBarSection::alwaysHidden;
        }
        if (position(window) < position(controlWindow(ControlItemManager::kSeparatorName))) {
            return MenuBarSection::hidden;
        }
        return MenuBarSection::visible;
    }
    bool isOnScreen(WindowID window) const {
        auto frame = mac.statusItemFrame(window);
        return frame && frame->maxX() > 0;
    }

    // Command-drags posted so far (one press each), of one window or (0) of any.
    std::size_t drags(WindowID window = 0) const {
        const std::pair<std::uint32_t, std::int64_t> naming{ItemMover::windowIDField, window};
        return std::count_if(mac.input().events().begin(), mac.input().events().end(),
                             [&](const auto& posted) {
                                 const auto& fields = posted.event.integerFields;
                                 return posted.event.type == MouseEventType::leftMouseDown &&
                                        (window == 0 || std::find(fields.begin(), fields.end(),
                                                                  naming) != fields.end());
                             });
    }

    void setRules(SectionRules rules) { preferences.setSectionByBundleID(std::move(rules)); }

    VisibleItemEnforcer::Dependencies
    enforcerDependencies(const WindowListSource& windows,
                         VisibleItemEnforcer::ManagerLookup controlItemManager) {
        return {scheduler, mac, windows, mac, preferences, kOwnPID, std::move(controlItemManager),
                {}};
    }

    sim::VirtualScheduler scheduler;
    sim::SimulatedMac mac{scheduler};
    sim::SimulatedLog log;
    sim::SimulatedAlerts alerts;
    Notices notices{alerts, mac, log};
    sim::MemoryKeyValueStore defaults;
    AppPreferences preferences{defaults};
    SwitchableLoginItem loginItem;
    LaunchAtLogin launchAtLogin{loginItem, log};
    VisibleItemEnforcer enforcer{enforcerDependencies(mac, [this] { return manager; })};
    std::shared_ptr<ControlItemManager> manager;
    int settingsOpened = 0;
    int navigationsStarted = 0;
};

} // namespace quillet::enginetests
