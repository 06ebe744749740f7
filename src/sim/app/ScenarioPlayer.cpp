#include "sim/app/ScenarioPlayer.hpp"

#include "core/prefs/AppPreferences.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/nav/NavigationSteps.hpp"
#include "sim/settings/SettingsSteps.hpp"

#include <algorithm>
#include <cstdio>

namespace quillet::sim {

namespace {

using namespace std::chrono_literals;

constexpr ButtonEvent kLeftMouseUp{2, 0};

void install(SimulatedMac& mac, const SimulatedMac::Application& app) {
    mac.installApplication(app.bundleID, "/Applications/" + app.name + ".app");
    mac.setRunningProcesses(app.bundleID, {app.pid});
}

void setStage(SimulatedMac& mac, const Scenario& scenario) {
    mac.setNaming(scenario.naming);
    mac.setScreenRecordingAllowed(scenario.screenRecording);
    mac.setAccessibilityTrusted(scenario.accessibility);
    // Like macOS, every new item appears at the left end: the bar is built from right to left.
    std::for_each(
        scenario.systemItems.rbegin(), scenario.systemItems.rend(),
        [&](const Scenario::SystemItem& item) { mac.addSystemItem(item.name, item.width); });
    std::for_each(scenario.apps.rbegin(), scenario.apps.rend(), [&](const Scenario::App& app) {
        install(mac, app.application);
        mac.addApplicationItem(app.application, app.title, app.width);
    });
}

// The user's rules, as the settings would have stored them, unless there are some already.
void storeRules(AppPreferences& preferences, const Scenario& scenario) {
    if (!preferences.sectionByBundleID().empty() || !preferences.profiles().empty()) {
        return;
    }
    auto bytes = [](const nlohmann::json& value) {
        const std::string text = value.dump();
        return Bytes(text.begin(), text.end());
    };
    preferences.setProfiles(SectionRulesCoding::decodeProfiles(bytes(scenario.profiles)).value);
    preferences.setSectionByBundleID(SectionRulesCoding::decodeRules(bytes(scenario.rules)).value);
}

std::string timestamp(Duration now) {
    char text[32];
    std::snprintf(text, sizeof text, "t=%.2fs", std::chrono::duration<double>(now).count());
    return text;
}

} // namespace

ScenarioPlayer::ScenarioPlayer(Scenario scenario, KeyValueStore* settings)
    : scenario_(std::move(scenario)), settings_(settings) {}

void ScenarioPlayer::stage(SimulatedQuillet& quillet, const Scenario& scenario) {
    setStage(quillet.world.mac, scenario);
    storeRules(quillet.services.preferences(), scenario);
}

void ScenarioPlayer::play(const Printer& print) {
    SimulatedQuillet quillet({"Quillet"}, settings_);
    SimulatedWorld& world = quillet.world;
    stage(quillet, scenario_);
    AppPreferences& preferences = quillet.services.preferences();

    const Rect display = world.mac.mainDisplayBounds();
    const Point overMenuBar{display.minX() + display.width() * 0.75, display.height() - 5};
    const Point awayFromMenuBar{overMenuBar.x, display.height() / 2};
    std::size_t logged = 0;
    std::size_t opened = 0;

    print("    " + world.mac.renderMenuBar());
    for (std::size_t index = 0; index < scenario_.steps.size(); ++index) {
        const Scenario::Step& step = scenario_.steps[index];
        bool settle = true;
        std::optional<std::string> failure;
        switch (step.action) {
        case Scenario::Action::launch:
            quillet.delegate.applicationDidFinishLaunching();
            break;
        case Scenario::Action::pressHotKey:
            world.hotKeys.press(keyCode(preferences.hotKey()), modifierMask(preferences.hotKey()));
            settle = false;
            break;
        case Scenario::Action::hoverMenuBar:
            world.pointer.moveTo(overMenuBar);
            settle = false;
            break;
        case Scenario::Action::pointerAway:
            world.pointer.moveTo(awayFromMenuBar);
            settle = false;
            break;
        case Scenario::Action::wait:
            world.scheduler.advance(std::chrono::milliseconds(step.milliseconds));
            settle = false;
            break;
        case Scenario::Action::clickToggle:
            if (auto toggle = world.mac.ownStatusItem("quillet.toggle")) {
                toggle->click(kLeftMouseUp);
            }
            settle = false;
            break;
        case Scenario::Action::activate:
            world.mac.activateApplication(step.argument);
            break;
        case Scenario::Action::switchProfile:
            preferences.switchProfile(step.argument);
            break;
        case Scenario::Action::launchApp:
            install(world.mac, step.app->application);
            world.mac.launchApplication(step.app->application,
                                        {{step.app->title, step.app->width}});
            break;
        case Scenario::Action::quitApp:
            for (const auto& app : scenario_.apps) {
                if (app.application.bundleID == step.argument) {
                    world.mac.quitApplication(app.application.pid);
                }
            }
            break;
        case Scenario::Action::keyboardNav:
            NavigationSteps::chooseKeyboardNavigation(world);
            break;
        case Scenario::Action::pressKey:
            world.mac.keyboard().type(*NavigationSteps::keyCode(step.argument));
            settle = false;
            break;
        case Scenario::Action::settings:
            failure = SettingsSteps::perform(world, step.settings);
            break;
        }
        if (settle) {
            world.scheduler.runUntilIdle();
        } else {
            world.scheduler.runDue();
        }
        print(std::to_string(index + 1) + ". " + step.title + "  (" +
              timestamp(world.scheduler.now()) + ")");
        print("    " + world.mac.renderMenuBar());
        for (const std::string& line : NavigationSteps::describe(world, opened)) {
            print("    " + line);
        }
        if (step.action == Scenario::Action::settings) {
            for (const std::string& line :
                 failure ? std::vector{*failure} : SettingsSteps::describe(world, step.settings)) {
                print("    " + line);
            }
        }
        for (; logged < world.log.lines().size(); ++logged) {
            print("    log: " + world.log.lines()[logged]);
        }
    }
}

} // namespace quillet::sim
