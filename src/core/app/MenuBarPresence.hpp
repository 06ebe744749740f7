#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/support/WeakAnchor.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace quillet {

class DisplayGeometry;
class MenuBarHostReader;
class Notices;
class Workspace;

// Tells the user when macOS places none of Quillet's items in any menu bar, which is what
// happens when Quillet is switched off under System Settings › Menu Bar: the items are made
// but never placed, so nothing Quillet does can be seen, and nothing inside the app says so.
class MenuBarPresence {
public:
    // Every reference must outlive the check.
    struct Dependencies {
        Scheduler& scheduler;
        const DisplayGeometry& displays;
        const Workspace& workspace;
        const MenuBarHostReader& menuBarHost;
        Notices& notices;
        Pid ownPID = 0;
        // Where AppKit has put each of our items (AppKit coordinates), as far as it says.
        std::function<std::vector<std::optional<Rect>>()> ownItemFrames;
    };

    // Long enough for the bar to have placed new items, frames lagging included.
    static constexpr Duration kPlacementTime = std::chrono::seconds(5);
    // The page of System Settings with the switch.
    static constexpr const char* kMenuBarSettingsURL =
        "x-apple.systempreferences:com.apple.MenuBarSettings";

    explicit MenuBarPresence(Dependencies dependencies) : deps_(std::move(dependencies)) {}

    // Looks once, kPlacementTime from now.
    void checkAfterLaunch();

private:
    // True or false when the bar says; nullopt when it cannot be told (the hosted bar unread).
    std::optional<bool> ownItemsPlaced() const;
    void check();

    Dependencies deps_;
    WeakAnchor<MenuBarPresence> anchor_{this};
};

} // namespace quillet
