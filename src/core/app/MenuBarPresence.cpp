#include "core/app/MenuBarPresence.hpp"

#include "core/app/Notices.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/BarKind.hpp"
#include "core/menubar/ScreenCoordinates.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/MenuBarHostReader.hpp"
#include "core/ports/Workspace.hpp"

#include <algorithm>
#include <string>

namespace quillet {

void MenuBarPresence::checkAfterLaunch() {
    deps_.scheduler.postAfter(kPlacementTime, [ref = anchor_.ref()] {
        if (auto* self = ref.get()) {
            self->check();
        }
    });
}

// Our own windows' frames settle it on the bar with a window per item. On the hosted bar they
// all give one placeholder frame, which proves nothing, and only the host's tree knows.
std::optional<bool> MenuBarPresence::ownItemsPlaced() const {
    const auto screens = deps_.displays.screens();
    const double thickness = deps_.displays.statusBarThickness();
    for (const auto& frame : deps_.ownItemFrames()) {
        // By its right end: a separator at its hiding length reaches off the screen's left edge.
        if (frame && isInAMenuBar(screens, thickness, {frame->maxX() - 1, frame->midY()})) {
            return true;
        }
    }
    if (deps_.workspace.runningProcesses(std::string(kMenuBarHostBundleID)).empty()) {
        return false;
    }
    const auto hosted = deps_.menuBarHost.hostedItems(AXResolver::kMessagingTimeout);
    if (!hosted) {
        return std::nullopt;
    }
    return std::any_of(hosted->begin(), hosted->end(),
                       [&](const HostedItem& item) { return item.owner == deps_.ownPID; });
}

void MenuBarPresence::check() {
    if (ownItemsPlaced() != false) {
        return;
    }
    deps_.notices.post(
        {.key = "switched off",
         .line = "Quillet: macOS shows none of Quillet's items in the menu bar; Quillet is "
                 "switched off under System Settings › Menu Bar",
         .alert = {.messageText = "Quillet is switched off in the menu bar",
                   .informativeText =
                       "macOS is not showing Quillet in the menu bar, so Quillet can neither "
                       "hide nor show your menu bar items. Turn Quillet on under “Allow in the "
                       "Menu Bar” in System Settings › Menu Bar.",
                   .buttons = {"Open Menu Bar Settings", "Not Now"}},
         .url = kMenuBarSettingsURL});
}

} // namespace quillet
