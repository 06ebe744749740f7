#pragma once

#include "core/settings/SettingsComponents.hpp"
#include "core/settings/SettingsPaneContext.hpp"
#include "core/support/WeakAnchor.hpp"

#include <optional>
#include <string>

namespace quillet {

// The General pane: whether items can be named, start-up, reveal on hover, spacers, the hot key
// and profiles. Its controls write straight into the preferences, whose observers apply them;
// the pane itself applies only launch at login and the profile operations. Its own state lives
// while it is shown. Main thread only.
class GeneralPane {
public:
    // Reads the login item's status and both permission grants.
    explicit GeneralPane(SettingsPaneContext context);
    GeneralPane(const GeneralPane&) = delete;
    GeneralPane& operator=(const GeneralPane&) = delete;

    // The pane comes on screen: the grants and the login item are read again.
    void appear();

    SettingsPage page() const;
    // "Save layout as", while it is open.
    std::optional<SettingsTextAlert> alert() const;

    void changed() const;

private:
    using Anchor = WeakAnchor<GeneralPane>;

    SettingsBanner permissionBanner() const;
    SettingsCard startupCard() const;
    SettingsCard behaviorCard() const;
    SettingsCard shortcutCard() const;
    SettingsCard profilesCard() const;

    void setLaunchAtLogin(bool enabled);
    // Clears the typed name and closes the alert, whichever button closed it.
    void closeAlert();

    SettingsPaneContext context_;
    bool launchAtLogin_ = false;
    bool showNewProfile_ = false;
    std::string newProfileName_;
    PermissionGrants grants_;
    Anchor anchor_{this};
};

} // namespace quillet
