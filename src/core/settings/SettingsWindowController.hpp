#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/AppIcon.hpp"
#include "core/menubar/HostedItemEnumerator.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/menubar/ItemImageCapture.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/SettingsWindowHost.hpp"
#include "core/settings/SettingsView.hpp"
#include "core/support/Subscription.hpp"
#include "core/support/WeakAnchor.hpp"

#include <memory>
#include <optional>
#include <vector>

namespace quillet {

class AccessibilityReader;
class AppPreferences;
class ApplicationShell;
class ControlItemManager;
class LaunchAtLogin;
class ProcessContext;
class Scheduler;
class ScreenCapture;

// The settings window: made on the first show() and reused for the life of the process. While it
// is open the application is a regular one, with a Dock icon; closing it makes it an accessory
// again. Main thread only.
class SettingsWindowController {
public:
    // Every reference must outlive the controller.
    struct Dependencies {
        Scheduler& scheduler;
        ApplicationShell& application;
        const DisplayGeometry& displays;
        SettingsWindowHost& windows;
        const ProcessContext& process;
        AppPreferences& preferences;
        LaunchAtLogin& launchAtLogin;
        const AccessibilityReader& accessibility;
        ScreenCapture& screenCapture;
        // What the Items pane lists.
        const WindowListSource& windowList;
        const Workspace& workspace;
        const SymbolImages& symbols;
        const MenuBarHostReader& menuBarHost;
        std::function<std::shared_ptr<ControlItemManager>()> controlItemManager;
        OwnItemFrames ownItems;
    };

    // "Quillet Settings": titled, closable, miniaturizable and resizable; 760 × 600, at least
    // 680 × 480; kept when closed.
    static const SettingsWindowStyle kWindowStyle;

    explicit SettingsWindowController(Dependencies dependencies);
    ~SettingsWindowController();
    SettingsWindowController(const SettingsWindowController&) = delete;
    SettingsWindowController& operator=(const SettingsWindowController&) = delete;

    // Makes the window if needed (on the pane "--tab=" names), centres it on the screen under
    // the pointer, gives the application its Dock icon, activates it and brings the window
    // forward.
    void show();
    // The window delegate's windowWillClose: the application leaves the Dock.
    void windowWillClose();

    // The toggle menu's "Settings…" and the launch's "--open-settings", unless already offered.
    void offerTo(AppDelegate::Hooks& hooks);

    // Where a window of `size` goes to be centred on the visible frame of the first screen that
    // holds `pointer`, or else of the main screen; nowhere without either (AppKit coordinates).
    static std::optional<Point> centredOrigin(Point pointer, const std::vector<Screen>& screens,
                                              const std::optional<Screen>& mainScreen, Size size);

    bool isOpen() const { return open_; }

private:
    using Ref = WeakAnchor<SettingsWindowController>::Ref;

    void assertMainThread() const;
    void makeWindow();
    void centre();
    void render();
    // Draws again once the current change is stored: preferences announce a change before they
    // store it.
    void renderSoon();

    Dependencies deps_;
    ItemEnumerator enumerator_;
    ItemImageCapture capture_;
    AppIcon icons_;
    AXResolver reporter_;
    HostedItemEnumerator hosted_;
    MenuBarAccess menuBar_;
    std::shared_ptr<SettingsWindow> window_;
    std::unique_ptr<SettingsView> view_;
    Subscription preferencesWatch_;
    bool open_ = false;
    bool renderPending_ = false;
    WeakAnchor<SettingsWindowController> anchor_{this};
};

} // namespace quillet
