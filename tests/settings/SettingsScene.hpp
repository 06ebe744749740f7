#pragma once

#include "core/engine/ControlItemManager.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/settings/SettingsWindowController.hpp"
#include "sim/app/SimulatedQuillet.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet::test {

// Quillet launched on a macOS 26 bar with Dropbox ruled Hide and Slack visible; the user opens
// the settings window from the toggle's menu, as anyone would.
class SettingsScene : public ::testing::Test {
protected:
    inline static const sim::SimulatedMac::Application kDropbox{"com.getdropbox.dropbox", "Dropbox",
                                                                701};
    inline static const sim::SimulatedMac::Application kSlack{"com.tinyspeck.slackmacgap", "Slack",
                                                              702};

    explicit SettingsScene(std::vector<std::string> arguments = {"Quillet"})
        : quillet(std::move(arguments)) {
        for (const auto* app : {&kSlack, &kDropbox}) {
            mac().installApplication(app->bundleID, "/Applications/" + app->name + ".app");
            mac().setRunningProcesses(app->bundleID, {app->pid});
            mac().addApplicationItem(*app, app->bundleID, 26);
        }
        preferences().setSectionByBundleID({{kDropbox.bundleID, MenuBarSection::hidden}});
    }

    void launch() {
        quillet.delegate.applicationDidFinishLaunching();
        settle();
    }
    void openFromMenu() {
        auto toggle = mac().ownStatusItem("quillet.toggle");
        toggle->click(ButtonEvent{4, 0}); // right-click: the menu
        toggle->chooseMenuEntry("Settings…");
        settle();
    }
    void settle() { quillet.world.scheduler.runUntilIdle(); }

    sim::SimulatedMac& mac() { return quillet.world.mac; }
    AppPreferences& preferences() { return quillet.services.preferences(); }
    sim::SimSettingsWindow& window() { return *quillet.world.settingsWindows.window(); }
    bool zoneOpen() { return quillet.delegate.controlManager->isExpanded(); }
    // The window's text, joined: for checking what a user reads anywhere on it.
    std::string shown() {
        std::string text;
        for (const std::string& line : window().render()) {
            text += line + "\n";
        }
        return text;
    }
    std::string row(const std::string& title) { return window().rowLine(title).value_or("(none)"); }

    sim::SimulatedQuillet quillet;
};

} // namespace quillet::test
