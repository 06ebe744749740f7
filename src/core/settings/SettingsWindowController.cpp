#include "core/settings/SettingsWindowController.hpp"

#include "core/ports/ApplicationShell.hpp"
#include "core/ports/ProcessContext.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <cassert>

namespace quillet {

namespace {

// NSWindowStyleMask: titled 1, closable 2, miniaturizable 4, resizable 8.
constexpr std::uint64_t kTitledClosableMiniaturizableResizable = 1 | 2 | 4 | 8;

} // namespace

const SettingsWindowStyle SettingsWindowController::kWindowStyle{
    .title = "Quillet Settings",
    .styleMask = kTitledClosableMiniaturizableResizable,
    .contentSize = {760, 600},
    .minSize = {680, 480},
    .releasedWhenClosed = false,
    .titlebarAppearsTransparent = false};

SettingsWindowController::SettingsWindowController(Dependencies dependencies)
    : deps_(std::move(dependencies)),
      enumerator_(deps_.windowList, deps_.displays, deps_.workspace, deps_.ownItems),
      capture_(deps_.screenCapture, deps_.displays), icons_(deps_.workspace, deps_.symbols),
      reporter_(deps_.accessibility, deps_.workspace),
      hosted_(deps_.menuBarHost, deps_.windowList, deps_.workspace),
      menuBar_{enumerator_,
               capture_,
               icons_,
               reporter_,
               hosted_,
               deps_.process.processIdentifier(),
               deps_.controlItemManager} {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::assertMainThread() const {
    assert(deps_.scheduler.isMainThread() && "the settings window is main-thread only");
}

void SettingsWindowController::show() {
    assertMainThread();
    if (!window_) {
        makeWindow();
    } else if (!open_) {
        // The pane comes on screen again, with what the user left in it.
        view_->appear();
    }
    open_ = true;
    render();
    centre();
    deps_.application.setActivationPolicy(ActivationPolicy::regular);
    deps_.application.activateIgnoringOtherApps();
    // Both: the second brings the window forward even when the activation was turned down.
    window_->makeKeyAndOrderFront();
    window_->orderFrontRegardless();
}

void SettingsWindowController::windowWillClose() {
    assertMainThread();
    open_ = false;
    deps_.application.setActivationPolicy(ActivationPolicy::accessory);
}

void SettingsWindowController::makeWindow() {
    window_ = deps_.windows.createWindow(kWindowStyle, [self = anchor_.ref()] {
        if (auto* controller = self.get()) {
            controller->windowWillClose();
        }
    });
    SettingsPaneContext context{deps_.scheduler,
                                deps_.preferences,
                                deps_.launchAtLogin,
                                deps_.accessibility,
                                deps_.screenCapture,
                                menuBar_,
                                [self = anchor_.ref()] {
                                    if (auto* controller = self.get()) {
                                        controller->render();
                                    }
                                }};
    view_ =
        std::make_unique<SettingsView>(std::move(context), initialPane(deps_.process.arguments()));
    preferencesWatch_ = deps_.preferences.objectWillChange().subscribe([this] { renderSoon(); });
}

void SettingsWindowController::centre() {
    if (auto origin = centredOrigin(deps_.displays.pointerLocation(), deps_.displays.screens(),
                                    deps_.displays.mainScreen(), window_->frameSize())) {
        window_->setFrameOrigin(*origin);
    }
}

std::optional<Point>
SettingsWindowController::centredOrigin(Point pointer, const std::vector<Screen>& screens,
                                        const std::optional<Screen>& mainScreen, Size size) {
    std::optional<Screen> target = mainScreen;
    for (const Screen& screen : screens) {
        if (screen.frame.contains(pointer)) {
            target = screen;
            break;
        }
    }
    if (!target) {
        return std::nullopt;
    }
    return Point{target->visibleFrame.midX() - size.width * 0.5,
                 target->visibleFrame.midY() - size.height * 0.5};
}

void SettingsWindowController::render() {
    renderPending_ = false;
    if (window_ && view_) {
        window_->setContent(view_->content());
    }
}

void SettingsWindowController::renderSoon() {
    // A closed window is drawn again when it is shown.
    if (renderPending_ || !open_) {
        return;
    }
    renderPending_ = true;
    deps_.scheduler.post([self = anchor_.ref()] {
        if (auto* controller = self.get(); controller && controller->renderPending_) {
            controller->render();
        }
    });
}

void SettingsWindowController::offerTo(AppDelegate::Hooks& hooks) {
    if (!hooks.showSettings) {
        hooks.showSettings = [self = anchor_.ref()] {
            if (auto* controller = self.get()) {
                controller->show();
            }
        };
    }
}

} // namespace quillet
