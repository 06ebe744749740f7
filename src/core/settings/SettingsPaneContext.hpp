#pragma once

#include "core/ports/Geometry.hpp"
#include "core/support/WeakAnchor.hpp"

#include <functional>
#include <memory>

namespace quillet {

class AXResolver;
class AccessibilityReader;
class AppIcon;
class HostedItemEnumerator;
class AppPreferences;
class ControlItemManager;
class ItemEnumerator;
class ItemImageCapture;
class LaunchAtLogin;
class Scheduler;
class ScreenCapture;

// What the Items pane reads of the menu bar, and the manager that rearranges it (none while it
// is gone).
struct MenuBarAccess {
    const ItemEnumerator& enumerator;
    const ItemImageCapture& capture;
    const AppIcon& icons;
    // Names items where the window list withholds titles.
    const AXResolver& reporter;
    // What the hosted bar of macOS 27 lists instead of windows.
    const HostedItemEnumerator& hosted;
    Pid ownPID = 0;
    std::function<std::shared_ptr<ControlItemManager>()> controlItemManager;
};

// What every pane reads and calls. Every reference outlives the panes.
struct SettingsPaneContext {
    Scheduler& scheduler;
    AppPreferences& preferences;
    LaunchAtLogin& launchAtLogin;
    const AccessibilityReader& accessibility;
    ScreenCapture& screenCapture;
    const MenuBarAccess& menuBar;
    // Called after a pane's own state changed, so that the window draws it again.
    std::function<void()> changed;
};

// The two optional privacy grants, as last read.
struct PermissionGrants {
    bool accessibility = false;
    bool screenRecording = false;

    // Reads both without prompting.
    static PermissionGrants read(const SettingsPaneContext& context);
    bool any() const { return accessibility || screenRecording; }
};

// Makes a pane's action: it does nothing once the pane is gone, and has the window draw the pane
// again after it ran.
template <class Pane, class Body> auto paneAction(const WeakAnchor<Pane>& anchor, Body body) {
    return [self = anchor.ref(), body](const auto&... arguments) {
        if (Pane* pane = self.get()) {
            body(*pane, arguments...);
            pane->changed();
        }
    };
}

} // namespace quillet
