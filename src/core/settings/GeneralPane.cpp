#include "core/settings/GeneralPane.hpp"

#include "core/engine/LaunchAtLogin.hpp"
#include "core/ports/AccessibilityReader.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "core/support/Text.hpp"

#include <algorithm>
#include <vector>

namespace quillet {

namespace {

constexpr std::string_view kSaveLayoutTitle = "Save layout as";
constexpr std::string_view kNoGrantMessage =
    "Hide and show still work. Accessibility or Screen Recording unlocks labels and search.";

} // namespace

GeneralPane::GeneralPane(SettingsPaneContext context)
    : context_(std::move(context)), launchAtLogin_(context_.launchAtLogin.isEnabled()),
      grants_(PermissionGrants::read(context_)) {}

void GeneralPane::appear() {
    grants_ = PermissionGrants::read(context_);
    // The switch shows the platform's state whenever it is shown, also after a change made in
    // System Settings while the window was closed.
    launchAtLogin_ = context_.launchAtLogin.isEnabled();
}

void GeneralPane::changed() const {
    if (context_.changed) {
        context_.changed();
    }
}

SettingsPage GeneralPane::page() const {
    return {"General",
            "Startup, reveal behavior, shortcut, and saved layouts.",
            {permissionBanner(), startupCard(), behaviorCard(), shortcutCard(), profilesCard()}};
}

SettingsBanner GeneralPane::permissionBanner() const {
    if (!grants_.any()) {
        return {SettingsBanner::Kind::warning, "Grant a permission for item names",
                std::string(kNoGrantMessage), "Permissions",
                paneAction(anchor_, [](GeneralPane& pane) {
                    // Read first, then ask: the banner keeps what was read until it is read again.
                    pane.grants_ = PermissionGrants::read(pane.context_);
                    pane.context_.accessibility.isTrusted(true);
                })};
    }
    return {SettingsBanner::Kind::success, "Item identity is available",
            grants_.accessibility
                ? "Accessibility is on — Quillet can name each menu bar item."
                : "Screen Recording is on — Quillet can name items and capture thumbnails.",
            std::nullopt, nullptr};
}

SettingsCard GeneralPane::startupCard() const {
    AppPreferences& preferences = context_.preferences;
    SettingsCard card{"Startup", std::nullopt, {}};
    appendRow(card, SettingsToggleRow{"power", Tint::green, "Launch at login",
                                      "Start Quillet when you sign in to this Mac", launchAtLogin_,
                                      paneAction(anchor_, [](GeneralPane& pane, bool enabled) {
                                          pane.setLaunchAtLogin(enabled);
                                      })});
    appendRow(card,
              SettingsToggleRow{"rectangle.compress.vertical", Tint::purple, "Collapse at launch",
                                "Hide the menu bar clutter as soon as Quillet starts",
                                preferences.collapseAtLaunch(),
                                [&preferences](bool on) { preferences.setCollapseAtLaunch(on); }});
    return card;
}

void GeneralPane::setLaunchAtLogin(bool enabled) {
    context_.launchAtLogin.setEnabled(enabled);
    // A registration that failed or waits for the user's approval flips the switch back.
    launchAtLogin_ = context_.launchAtLogin.isEnabled();
}

SettingsCard GeneralPane::behaviorCard() const {
    AppPreferences& preferences = context_.preferences;
    SettingsCard card{"Behavior", std::nullopt, {}};
    appendRow(card, SettingsToggleRow{"hand.point.up.left.fill", Tint::cyan, "Reveal on hover",
                                      "Show hidden icons when the pointer enters the menu bar",
                                      preferences.autoRehide(),
                                      [&preferences](bool on) { preferences.setAutoRehide(on); }});
    SettingsStepper spacers{
        .value = preferences.spacerCount(),
        .minimum = 0,
        .maximum = 5,
        .step = 1,
        .setValue = [&preferences](std::int64_t count) { preferences.setSpacerCount(count); }};
    appendRow(card, SettingsRow{"arrow.left.and.right",
                                Tint::blue,
                                "Menu bar spacers",
                                "Draggable gaps for grouping icons (0–5)",
                                {0, {std::move(spacers)}}});
    return card;
}

SettingsCard GeneralPane::shortcutCard() const {
    AppPreferences& preferences = context_.preferences;
    SettingsPopUp hotKeys{.choices = {},
                          .selectedTag = std::string(rawValue(preferences.hotKey())),
                          .pick = [&preferences](const std::string& tag) {
                              if (auto option = hotKeyOption(tag)) {
                                  preferences.setHotKey(*option);
                              }
                          }};
    for (HotKeyOption option : allHotKeyOptions) {
        hotKeys.choices.push_back({std::string(title(option)), std::string(rawValue(option))});
    }
    SettingsCard card{"Shortcut", "Works via Carbon — never installs an event tap.", {}};
    appendRow(card, SettingsRow{"keyboard.fill",
                                Tint::indigo,
                                "Toggle hidden items",
                                "Global hotkey — no Accessibility grant required",
                                {0, {std::move(hotKeys)}}});
    return card;
}

SettingsCard GeneralPane::profilesCard() const {
    AppPreferences& preferences = context_.preferences;
    SettingsCard card{
        "Profiles", "Profiles snapshot Show / Hide / Always / Auto rules for every app.", {}};
    if (!preferences.profiles().empty()) {
        SettingsPopUp picker{
            .choices = {{"None", ""}},
            .selectedTag = preferences.activeProfile(),
            .pick = [&preferences](const std::string& name) { preferences.switchProfile(name); }};
        // The profiles map keeps its names in ascending order.
        for (const auto& [name, rules] : preferences.profiles()) {
            picker.choices.push_back({name, name});
        }
        appendRow(card, SettingsRow{"rectangle.stack.fill",
                                    Tint::orange,
                                    "Active profile",
                                    "Swap the full Show / Hide / Always / Auto layout",
                                    {0, {std::move(picker)}}});
    }
    appendRow(
        card,
        SettingsRow{"square.and.arrow.down",
                    Tint::teal,
                    "Save current layout",
                    "Store today’s rules under a name you can restore later",
                    {0, {SettingsButton::titled("Save…", paneAction(anchor_, [](GeneralPane& pane) {
                                                    pane.showNewProfile_ = true;
                                                }))}}});
    if (const std::string& active = preferences.activeProfile(); !active.empty()) {
        SettingsButton remove = SettingsButton::titled("Delete", [&preferences] {
            // No confirmation: the live rules stay, only the saved copy goes.
            preferences.deleteProfile(preferences.activeProfile());
        });
        remove.role = SettingsButton::Role::destructive;
        appendRow(card, SettingsRow{"trash",
                                    Tint::red,
                                    "Delete “" + active + "”",
                                    "Removes this profile only — current rules stay put",
                                    {0, {std::move(remove)}}});
    }
    return card;
}

std::optional<SettingsTextAlert> GeneralPane::alert() const {
    if (!showNewProfile_) {
        return std::nullopt;
    }
    SettingsButton save =
        SettingsButton::titled("Save", paneAction(anchor_, [](GeneralPane& pane) {
                                   // An empty name is the store's to ignore.
                                   pane.context_.preferences.saveProfile(
                                       std::string(trimmedSpacesAndTabs(pane.newProfileName_)));
                                   pane.closeAlert();
                               }));
    SettingsButton cancel = SettingsButton::titled(
        "Cancel", paneAction(anchor_, [](GeneralPane& pane) { pane.closeAlert(); }));
    cancel.role = SettingsButton::Role::cancel;
    return SettingsTextAlert{
        std::string(kSaveLayoutTitle),
        "Saves the current Show / Hide / Always / Auto rules as a named profile.",
        {"Profile name", newProfileName_,
         paneAction(anchor_, [](GeneralPane& pane,
                                const std::string& text) { pane.newProfileName_ = text; })},
        {std::move(save), std::move(cancel)}};
}

void GeneralPane::closeAlert() {
    newProfileName_.clear();
    showNewProfile_ = false;
}

} // namespace quillet
