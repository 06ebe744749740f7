#include "core/nav/KeyboardNavController.hpp"

#include "core/engine/ControlItemManager.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/HostedItemEnumerator.hpp"
#include "core/nav/NavHUD.hpp"
#include "core/ports/ApplicationShell.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/InputInjector.hpp"
#include "core/ports/ProcessContext.hpp"

#include <algorithm>
#include <cassert>
#include <utility>

namespace quillet {

namespace {

constexpr std::string_view kPassed = "PASSED — local monitor caught arrows, focus moved";
constexpr std::string_view kFailed = "FAILED — monitor did not move focus (key capture broken)";

std::string setupFailureLine(bool active, std::int64_t items) {
    return std::string("NAV-SELFTEST: FAILED — setup (active=") + (active ? "true" : "false") +
           ", items=" + std::to_string(items) + ")";
}

} // namespace

// Borderless, buffered, not deferred, at the status window level; it floats, stays when the
// application deactivates, and is see-through but for its content, with a shadow.
const PanelStyle KeyboardNavController::kPanelStyle{.contentRect = makeRect(0, 0, 300, 70),
                                                    .styleMask = 0,
                                                    .backing = 2,
                                                    .deferred = false,
                                                    .level = 25,
                                                    .floatingPanel = true,
                                                    .hidesOnDeactivate = false,
                                                    .opaque = false,
                                                    .clearBackground = true,
                                                    .hasShadow = true};

void KeyboardNavController::assertMainThread() const {
    assert(deps_.scheduler.isMainThread() && "keyboard navigation is main-thread only");
}

Point KeyboardNavController::panelOrigin(const Rect& screenFrame) {
    return {screenFrame.midX() - kPanelStyle.contentRect.width() / 2,
            screenFrame.maxY() - kPanelDropFromTop};
}

void KeyboardNavController::setState(std::optional<NavState> state) {
    state_ = std::move(state);
    // The panel always shows the current focus.
    if (panel_) {
        panel_->setContent(NavHUD(*this).body());
    }
}

std::string KeyboardNavController::positionLabel() const {
    if (!state_ || state_->items.empty()) {
        return "";
    }
    return std::to_string(state_->index + 1) + " / " + std::to_string(state_->count());
}

void KeyboardNavController::enter() {
    assertMainThread();
    isEntering_ = true;
    if (auto items = deps_.controlItems(); items && !items->isExpanded()) {
        items->setExpanded(true);
    }
    TaskHandle::spawn(deps_.scheduler, setUpAfterDelay(deps_.scheduler, anchor_.ref()));
}

Task<> KeyboardNavController::setUpAfterDelay(Scheduler& scheduler, Ref self) {
    // Nothing cancels this wait: an early exit() is seen through `isEntering`.
    co_await sleep(scheduler, kSetUpDelay);
    if (auto* nav = self.get()) {
        nav->finishEntering();
    }
}

void KeyboardNavController::finishEntering() {
    if (!isEntering_) {
        return; // exit() came first
    }
    auto items = itemsLeftToRight();
    // With nothing to walk navigation does not start, and the hidden zone stays open.
    if (!items.empty()) {
        setState(NavState{std::move(items), 0});
        showPanel();
        installMonitor();
    }
    isEntering_ = false;
}

std::vector<MenuBarItem> KeyboardNavController::itemsLeftToRight() const {
    auto items = isHostedBar() ? hostedItems() : windowItems();
    std::stable_sort(items.begin(), items.end(), [](const MenuBarItem& a, const MenuBarItem& b) {
        return a.frame.minX() < b.frame.minX();
    });
    return items;
}

bool KeyboardNavController::isHostedBar() const {
    const auto manager = deps_.controlItems();
    return manager && manager->barKind() == BarKind::hosted;
}

std::vector<MenuBarItem> KeyboardNavController::windowItems() const {
    const ItemEnumerator enumerator(deps_.windows, deps_.displays, deps_.workspace, deps_.ownItems);
    const Pid ownPID = deps_.process.processIdentifier();
    auto items = enumerator.mainDisplayItems(ownPID);
    std::erase_if(items, [](const MenuBarItem& item) { return item.isOwnControlItem; });
    // Untitled (no Screen Recording), every item would read "Control Center" in the panel.
    enumerator.nameUntitledByAccessibility(items, AXResolver(deps_.accessibility, deps_.workspace),
                                           ownPID);
    return items;
}

// The hosted bar of macOS 27 gives its items no windows; its host's tree lists them. Those in
// its overflow menu have no place in the bar, for the keys as for the pointer.
std::vector<MenuBarItem> KeyboardNavController::hostedItems() const {
    const HostedItemEnumerator hosted(deps_.menuBarHost, deps_.windows, deps_.workspace);
    auto items = hosted.itemsInTheBar(deps_.process.processIdentifier());
    const Rect main = deps_.displays.mainDisplayBounds();
    std::erase_if(items,
                  [&](const MenuBarItem& item) { return !main.contains(item.frame.center()); });
    return items;
}

void KeyboardNavController::installMonitor() {
    // A monitor installed earlier and still there keeps its place; only the token is replaced.
    monitor_ = deps_.keys.addLocalMonitor(kKeyDownEventMask,
                                          [self = anchor_.ref()](const KeyEvent& event) {
                                              auto* nav = self.get();
                                              return nav != nullptr && nav->handle(event);
                                          });
}

void KeyboardNavController::showPanel() {
    assertMainThread();
    auto panel = deps_.panels.createPanel(kPanelStyle);
    panel->setContent(NavHUD(*this).body());
    if (auto screen = deps_.displays.mainScreen()) {
        panel->setFrameOrigin(panelOrigin(screen->frame));
    }
    panel->makeKeyAndOrderFront();
    deps_.application.activateIgnoringOtherApps();
    // A previous panel is let go of as it is, without ordering it out.
    panel_ = std::move(panel);
}

bool KeyboardNavController::handle(const KeyEvent& event) {
    assertMainThread();
    switch (event.keyCode) {
    case kReturnKey:
    case kKeypadEnterKey:
        activateFocused();
        return true;
    case kEscapeKey:
        exit();
        return true;
    case kLeftArrowKey:
        if (state_ && state_->index >= 1) {
            setState(NavState{state_->items, state_->index - 1});
        }
        return true;
    case kRightArrowKey:
        if (state_ && state_->index < state_->count() - 1) {
            setState(NavState{state_->items, state_->index + 1});
        }
        return true;
    default:
        return false;
    }
}

void KeyboardNavController::activateFocused() {
    assertMainThread();
    if (!state_ || !state_->hasFocus()) {
        return;
    }
    // Where the list saw the item: if it has gone meanwhile, the click lands there all the same.
    const Point centre = state_->items[static_cast<std::size_t>(state_->index)].frame.center();
    deps_.input.warpCursor(centre);
    deps_.input.post(MouseEvent{MouseEventType::leftMouseDown, centre, 0, {}});
    deps_.input.post(MouseEvent{MouseEventType::leftMouseUp, centre, 0, {}});
    // At once, without waiting for the click to be handled.
    exit();
}

void KeyboardNavController::exit() {
    assertMainThread();
    isEntering_ = false;
    if (monitor_) {
        deps_.keys.removeMonitor(*std::exchange(monitor_, std::nullopt));
    }
    if (panel_) {
        std::exchange(panel_, nullptr)->orderOut();
    }
    setState(std::nullopt);
    // Leaving, also by opening an item, always closes the hidden zone.
    if (auto items = deps_.controlItems(); items && items->isExpanded()) {
        items->setExpanded(false);
    }
}

void KeyboardNavController::offerTo(AppDelegate::Hooks& hooks) {
    if (!hooks.startKeyboardNav) {
        hooks.startKeyboardNav = [self = anchor_.ref()] {
            if (auto* nav = self.get()) {
                nav->enter();
            }
        };
    }
    if (!hooks.runNavigationSelfTest) {
        hooks.runNavigationSelfTest = [self = anchor_.ref()] {
            if (auto* nav = self.get()) {
                nav->enter();
                nav->runSelfTest();
            }
        };
    }
}

void KeyboardNavController::runSelfTest() {
    assertMainThread();
    TaskHandle::spawn(deps_.scheduler, selfTest(deps_.scheduler, anchor_.ref()));
}

std::int64_t KeyboardNavController::focusIndex() const {
    // Navigation ended under the self-test (an Escape, an exit() from elsewhere): no focus.
    return state_ ? state_->index : -1;
}

void KeyboardNavController::pressKey(std::uint16_t keyCode) {
    const auto source = deps_.input.createHIDEventSource();
    deps_.input.post(source.get(), KeyEvent{keyCode, true});
    deps_.input.post(source.get(), KeyEvent{keyCode, false});
}

void KeyboardNavController::finishSelfTest(const std::string& line) {
    deps_.process.writeStandardOutput(line + "\n");
    exit();
    deps_.application.terminate();
}

Task<> KeyboardNavController::selfTest(Scheduler& scheduler, Ref self) {
    co_await sleep(scheduler, kSelfTestDelay);
    auto* nav = self.get();
    if (nav == nullptr) {
        co_return;
    }
    const bool active = nav->monitor_.has_value() || nav->isEntering_;
    const std::int64_t count = nav->state_ ? nav->state_->count() : 0;
    if (!active || count < 3) {
        // Leaving before quitting as on the verdict's path, so that neither the open hidden zone
        // nor the key monitor outlives the test.
        nav->finishSelfTest(setupFailureLine(active, count));
        co_return;
    }
    std::int64_t readings[4] = {nav->focusIndex(), 0, 0, 0};
    constexpr std::uint16_t kPresses[3] = {kRightArrowKey, kRightArrowKey, kLeftArrowKey};
    for (std::size_t press = 0; press < 3; ++press) {
        nav->pressKey(kPresses[press]);
        co_await sleep(scheduler, kSelfTestKeyDelay);
        nav = self.get();
        if (nav == nullptr) {
            co_return;
        }
        readings[press + 1] = nav->focusIndex();
    }
    const bool passed = readings[1] == readings[0] + 1 && readings[2] == readings[0] + 2 &&
                        readings[3] == readings[1];
    nav->finishSelfTest(std::string("NAV-SELFTEST: index ") + std::to_string(readings[0]) + "→" +
                        std::to_string(readings[1]) + "→" + std::to_string(readings[2]) + "→" +
                        std::to_string(readings[3]) + "  " +
                        std::string(passed ? kPassed : kFailed));
}

} // namespace quillet
