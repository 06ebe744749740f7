#include "sim/app/ScenarioPlayer.hpp"

#include "core/prefs/AppPreferences.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/app/ZoneCheck.hpp"
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

// The window of the item the bar shows as `name`; ours by the names of their autosave names.
std::optional<WindowID> itemNamed(const SimulatedMac& mac, const std::string& name) {
    if (auto own = mac.ownStatusItem("quillet." + name)) {
        return own->window();
    }
    for (const MenuBarModel::Item* item : mac.menuBar().itemsByWindow()) {
        if (item->kind != MenuBarModel::Kind::own &&
            (item->kind == MenuBarModel::Kind::system ? item->title : item->appName) == name) {
            return item->window;
        }
    }
    return std::nullopt;
}

// The user's own Command-drag, which the bar takes on either kind of bar: the item is released
// just inside the anchor's edge on the chosen side. A failure is said in one line.
std::optional<std::string> userDrags(SimulatedMac& mac, const Scenario::Step& step) {
    const auto item = itemNamed(mac, step.argument);
    const auto anchor = itemNamed(mac, step.anchor);
    const auto frame = anchor ? mac.shownItemFrame(*anchor) : std::nullopt;
    if (!item || !frame) {
        return "the bar shows no " + (item ? step.anchor : step.argument) + " to drag by";
    }
    if (!mac.userCommandDrags(*item, step.leftOfAnchor ? frame->minX() + 1 : frame->maxX() - 1)) {
        return "the bar shows no " + step.argument + " to drag";
    }
    return std::nullopt;
}

} // namespace

ScenarioPlayer::ScenarioPlayer(Scenario scenario, KeyValueStore* settings, DropModel dropModel)
    : scenario_(std::move(scenario)), settings_(settings), dropModel_(dropModel) {}

void ScenarioPlayer::stage(SimulatedQuillet& quillet, const Scenario& scenario) {
    quillet.world.runMacOS(scenario.macOS);
    setStage(quillet.world.mac, scenario);
    storeRules(quillet.services.preferences(), scenario);
}

ScenarioPlayer::Outcome ScenarioPlayer::play(const Printer& print) {
    SimulatedQuillet quillet({"Quillet"}, settings_);
    SimulatedWorld& world = quillet.world;
    stage(quillet, scenario_);
    world.mac.setDropModel(dropModel_);
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
            // Whether it was there from the start or launched by a step.
            for (Pid pid : world.mac.runningProcesses(step.argument)) {
                world.mac.quitApplication(pid);
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
        case Scenario::Action::userDrags:
            failure = userDrags(world.mac, step);
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
        if (failure && step.action == Scenario::Action::userDrags) {
            print("    " + *failure);
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

    world.scheduler.advance(kIdleWait);
    print("once idle  (" + timestamp(world.scheduler.now()) + ")");
    print("    " + world.mac.renderMenuBar());
    for (; logged < world.log.lines().size(); ++logged) {
        print("    log: " + world.log.lines()[logged]);
    }
    return outcome(world, preferences);
}

ScenarioPlayer::Outcome ScenarioPlayer::outcome(SimulatedWorld& world,
                                                const AppPreferences& preferences) {
    Outcome result;
    result.zoneProblems =
        ZoneCheck::problems(world.mac.menuBar(), preferences.sectionByBundleID(),
                            world.mac.frontmostBundleID(), world.mac.screenRecordingAllowed());
    const auto& events = world.mac.input().events();
    result.dragsPosted =
        std::count_if(events.begin(), events.end(), [](const SimulatedInput::PostedEvent& posted) {
            return posted.event.type == MouseEventType::leftMouseDown &&
                   (posted.event.flags & EventFlags::command) != 0;
        });
    result.moves = world.mac.input().cursorHides();
    result.cursorHidden = world.mac.input().cursorHiddenTime();
    result.pendingOnceIdle = world.scheduler.pendingJobs();
    return result;
}

std::vector<std::string> ScenarioPlayer::describe(const Outcome& outcome, bool withStats) {
    std::vector<std::string> lines;
    if (outcome.zoneProblems.empty()) {
        lines.push_back("zones: every item is in its zone");
    }
    for (const std::string& problem : outcome.zoneProblems) {
        lines.push_back("zones: " + problem);
    }
    if (withStats) {
        char figures[160];
        std::snprintf(figures, sizeof figures,
                      "stats: %zu drags posted, %zu attempts in %d moves, cursor hidden %.2f s, "
                      "%zu timers pending once idle",
                      outcome.dragsPosted, outcome.dragsPosted, outcome.moves,
                      std::chrono::duration<double>(outcome.cursorHidden).count(),
                      outcome.pendingOnceIdle);
        lines.emplace_back(figures);
    }
    return lines;
}

} // namespace quillet::sim
