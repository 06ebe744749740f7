#include "core/settings/PermissionsPane.hpp"

#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/ScreenCapture.hpp"

namespace quillet {

namespace {

constexpr std::string_view kSubtitle =
    "Optional grants for naming items and thumbnails. Core hide and show never needs them.";
constexpr std::string_view kAccessFooter =
    "Neither permission can install an event tap. Quillet still uses zero CGEventTaps.";

} // namespace

PermissionsPane::PermissionsPane(SettingsPaneContext context)
    : context_(std::move(context)), grants_(PermissionGrants::read(context_)) {}

void PermissionsPane::changed() const {
    if (context_.changed) {
        context_.changed();
    }
}

SettingsPage PermissionsPane::page() const {
    return {"Permissions", std::string(kSubtitle), {statusBanner(), accessCard(), refreshCard()}};
}

SettingsBanner PermissionsPane::statusBanner() const {
    if (!grants_.any()) {
        return {SettingsBanner::Kind::info, "Running without TCC",
                "Hide, show, hover, and the hotkey all work. Names and search need a grant below.",
                std::nullopt, nullptr};
    }
    return {SettingsBanner::Kind::success, "Enough permission for identity",
            "Either Accessibility or Screen Recording is enough to label menu bar items.",
            std::nullopt, nullptr};
}

SettingsRow PermissionsPane::permissionRow(std::string icon, Tint tint, std::string title,
                                           std::string subtitle, bool granted,
                                           std::function<void()> grant) {
    SettingsTrailing trailing{
        10,
        {SettingsLabel{granted ? "Granted" : "Not granted", TextStyle::caption,
                       FontWeight::semibold, granted ? Tint::green : Tint::secondary}}};
    if (!granted) {
        trailing.controls.emplace_back(SettingsButton::titled("Grant…", grant));
    }
    return {std::move(icon), tint, std::move(title), std::move(subtitle), std::move(trailing)};
}

SettingsCard PermissionsPane::accessCard() const {
    auto grantAccessibility = paneAction(anchor_, [](PermissionsPane& pane) {
        pane.context_.accessibility.isTrusted(true);
        pane.reread();
    });
    auto grantScreenRecording = paneAction(anchor_, [](PermissionsPane& pane) {
        pane.context_.screenCapture.request();
        // The answer comes later, if the user gives it in time; "Refresh" catches a late one.
        pane.context_.scheduler.postAfter(
            kScreenRecordingRecheckDelay,
            paneAction(pane.anchor_, [](PermissionsPane& later) { later.reread(); }));
    });
    SettingsCard card{"System access", std::string(kAccessFooter), {}};
    appendRow(card,
              permissionRow("hand.raised.fill", grants_.accessibility ? Tint::green : Tint::orange,
                            "Accessibility", "Precise item identity and future reordering",
                            grants_.accessibility, grantAccessibility));
    appendRow(card, permissionRow("rectangle.dashed.badge.record",
                                  grants_.screenRecording ? Tint::green : Tint::secondary,
                                  "Screen Recording",
                                  "Un-redacts window names and enables item thumbnails",
                                  grants_.screenRecording, grantScreenRecording));
    return card;
}

SettingsCard PermissionsPane::refreshCard() const {
    SettingsCard card;
    appendRow(
        card,
        SettingsRow{
            "arrow.clockwise",
            Tint::blue,
            "Refresh status",
            "Re-read TCC after changing System Settings",
            {0, {SettingsButton::titled("Refresh", paneAction(anchor_, [](PermissionsPane& pane) {
                                            pane.reread();
                                        }))}}});
    return card;
}

} // namespace quillet
