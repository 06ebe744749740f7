// The toggle's clicks and its context menu.

#include "core/engine/ControlItemManager.hpp"

#include "core/engine/LaunchAtLogin.hpp"
#include "core/ports/InputInjector.hpp"

namespace quillet {

namespace {

// Actions of the entries that the manager handles itself.
constexpr std::string_view kToggleAction = "toggle";
constexpr std::string_view kKeyboardNavAction = "startKeyboardNav";
constexpr std::string_view kSettingsAction = "openSettings";
constexpr std::string_view kLaunchAtLoginAction = "toggleLaunchAtLogin";

constexpr auto kRightMouseUp = static_cast<std::uint32_t>(MouseEventType::rightMouseUp);

// Just below the button.
constexpr double kMenuOffsetBelowButton = 5.0;

MenuEntry entry(std::string title, std::string_view action, std::string keyEquivalent = {},
                MenuEntry::Target target = MenuEntry::Target::handler) {
    MenuEntry item;
    item.title = std::move(title);
    item.action = std::string(action);
    item.keyEquivalent = std::move(keyEquivalent);
    item.target = target;
    return item;
}

MenuEntry separatorEntry() {
    MenuEntry separator;
    separator.kind = MenuEntry::Kind::separator;
    return separator;
}

} // namespace

void ControlItemManager::toggleButtonClicked(std::optional<ButtonEvent> event) {
    assertMainThread();
    if (event && (event->type == kRightMouseUp || (event->modifierFlags & EventFlags::control))) {
        presentContextMenu();
        return;
    }
    // A plain click never reveals the always-hidden zone.
    toggle();
}

void ControlItemManager::watchToggleClicks(PointerMonitor& pointer) {
    toggleClicks_ = std::make_unique<ToggleClickWatch>(ToggleClickWatch::Dependencies{
        .pointer = pointer,
        .scheduler = deps_.scheduler,
        .isOnToggle = [this](Point appKit) { return isOnToggle(appKit); },
        .movingItems = [this] { return isMovingItems(); },
        .deliver = [this](std::optional<ButtonEvent> event) { toggleButtonClicked(event); }});
}

std::vector<std::optional<Rect>> ControlItemManager::controlItemFrames() const {
    return {alwaysSeparatorItem_->windowFrame(), separatorItem_->windowFrame(),
            toggleItem_->windowFrame()};
}

std::vector<MenuEntry> ControlItemManager::contextMenuEntries() const {
    MenuEntry launchAtLogin = entry("Launch at Login", kLaunchAtLoginAction);
    launchAtLogin.checked = deps_.launchAtLogin.isEnabled();
    return {
        entry(isExpanded_ ? "Hide Menu Bar Items" : "Show Menu Bar Items", kToggleAction),
        entry("Keyboard Navigation", kKeyboardNavAction),
        separatorEntry(),
        entry("Settings…", kSettingsAction, ","),
        launchAtLogin,
        entry("Check for Updates…", "checkForUpdates:", {}, MenuEntry::Target::updater),
        separatorEntry(),
        entry("Quit Quillet", "terminate:", "q", MenuEntry::Target::application),
    };
}

void ControlItemManager::presentContextMenu() {
    assertMainThread();
    const Point belowButton{0, toggleItem_->buttonHeight() + kMenuOffsetBelowButton};
    toggleItem_->popUpMenu(contextMenuEntries(), belowButton,
                           [weak = weak_from_this()](const std::string& action) {
                               if (auto self = weak.lock()) {
                                   self->performMenuAction(action);
                               }
                           });
}

void ControlItemManager::performMenuAction(std::string_view action) {
    if (action == kToggleAction) {
        toggle();
    } else if (action == kKeyboardNavAction) {
        startKeyboardNav();
    } else if (action == kSettingsAction) {
        openSettings();
    } else if (action == kLaunchAtLoginAction) {
        toggleLaunchAtLogin();
    }
}

void ControlItemManager::toggleLaunchAtLogin() {
    deps_.launchAtLogin.setEnabled(!deps_.launchAtLogin.isEnabled());
}

void ControlItemManager::openSettings() {
    if (deps_.openSettings) {
        deps_.openSettings();
    }
}

void ControlItemManager::startKeyboardNav() {
    if (deps_.startKeyboardNav) {
        deps_.startKeyboardNav();
    }
}

} // namespace quillet
