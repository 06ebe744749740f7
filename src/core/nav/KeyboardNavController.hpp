#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/nav/NavState.hpp"
#include "core/ports/FloatingPanel.hpp"
#include "core/ports/KeyMonitor.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/support/Task.hpp"
#include "core/support/WeakAnchor.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillet {

class AccessibilityReader;
class ApplicationShell;
class ControlItemManager;
class InputInjector;
class MenuBarHostReader;
class ProcessContext;

// Keyboard navigation: opens the hidden zone, walks the other applications' items on the main
// display with the arrow keys while a small hint panel names the focused one, opens it with
// Return by clicking it, and leaves with Escape. The keys arrive through a local key monitor, so
// they reach it only while this application is active with its panel key. Main thread only.
class KeyboardNavController {
public:
    // Every reference must outlive the controller.
    struct Dependencies {
        Scheduler& scheduler;
        const WindowListSource& windows;
        const DisplayGeometry& displays;
        const Workspace& workspace;
        const AccessibilityReader& accessibility;
        const MenuBarHostReader& menuBarHost;
        KeyMonitor& keys;
        PanelHost& panels;
        ApplicationShell& application;
        InputInjector& input;
        ProcessContext& process;
        // The control item manager, if it still exists.
        std::function<std::shared_ptr<ControlItemManager>()> controlItems;
        OwnItemFrames ownItems;
    };

    // Virtual key codes.
    static constexpr std::uint16_t kReturnKey = 36;
    static constexpr std::uint16_t kKeypadEnterKey = 76;
    static constexpr std::uint16_t kEscapeKey = 53;
    static constexpr std::uint16_t kLeftArrowKey = 123;
    static constexpr std::uint16_t kRightArrowKey = 124;

    // Time for the hidden zone to open before the items are listed.
    static constexpr Duration kSetUpDelay = std::chrono::milliseconds(250);
    static constexpr Duration kSelfTestDelay = std::chrono::milliseconds(700);
    static constexpr Duration kSelfTestKeyDelay = std::chrono::milliseconds(180);

    // The hint panel: 300 × 70, its bottom edge 110 points below the top of the main screen.
    static const PanelStyle kPanelStyle;
    static constexpr double kPanelDropFromTop = 110;

    explicit KeyboardNavController(Dependencies dependencies) : deps_(std::move(dependencies)) {}
    KeyboardNavController(const KeyboardNavController&) = delete;
    KeyboardNavController& operator=(const KeyboardNavController&) = delete;

    // Opens the hidden zone and, a quarter of a second later, starts walking its items. Called
    // again while active, it starts over with a second key monitor and leaves the first one
    // installed for good.
    void enter();
    // Ends navigation at any stage: removes the monitor and the panel and closes the hidden zone.
    void exit();
    // The key map; true when the key was consumed.
    bool handle(const KeyEvent& event);
    // Clicks the focused item at its centre and leaves navigation.
    void activateFocused();
    // Shows a new hint panel and activates the application so that it gets the keys.
    void showPanel();
    // "3 / 7", or "" when there is nothing to walk.
    std::string positionLabel() const;
    // After `enter()`: checks that synthetic arrows move the focus, prints the verdict and quits.
    void runSelfTest();

    // The toggle menu's "Keyboard Navigation" and the launch's "--nav-selftest", for whichever of
    // the two hooks is not set yet.
    void offerTo(AppDelegate::Hooks& hooks);

    const std::optional<NavState>& state() const { return state_; }

    // Where the panel goes on a screen with this frame (AppKit coordinates).
    static Point panelOrigin(const Rect& screenFrame);

private:
    using Ref = WeakAnchor<KeyboardNavController>::Ref;

    void assertMainThread() const;
    void setState(std::optional<NavState> state);
    void finishEntering();
    std::vector<MenuBarItem> itemsLeftToRight() const;
    bool isHostedBar() const;
    std::vector<MenuBarItem> windowItems() const;
    std::vector<MenuBarItem> hostedItems() const;
    void installMonitor();
    std::int64_t focusIndex() const;
    void pressKey(std::uint16_t keyCode);
    void finishSelfTest(const std::string& line);
    static Task<> setUpAfterDelay(Scheduler& scheduler, Ref self);
    static Task<> selfTest(Scheduler& scheduler, Ref self);

    Dependencies deps_;
    std::optional<KeyMonitor::Token> monitor_;
    std::shared_ptr<FloatingPanel> panel_;
    std::optional<NavState> state_;
    bool isEntering_ = false;
    WeakAnchor<KeyboardNavController> anchor_{this};
};

} // namespace quillet
