#pragma once

#include "core/ports/Scheduler.hpp"
#include "core/settings/SettingsComponents.hpp"
#include "core/settings/SettingsPaneContext.hpp"
#include "core/support/WeakAnchor.hpp"

#include <chrono>

namespace quillet {

// The Permissions pane: the two optional grants that let Quillet name items, a request for each
// missing one, and a way to read them again after changing them in System Settings. It does not
// watch the system: the grants shown are those read on appearing, after a request and by
// "Refresh". Main thread only.
class PermissionsPane {
public:
    // The Screen Recording request is answered asynchronously; the pane looks again this much
    // later.
    static constexpr Duration kScreenRecordingRecheckDelay = std::chrono::seconds(1);

    explicit PermissionsPane(SettingsPaneContext context);
    PermissionsPane(const PermissionsPane&) = delete;
    PermissionsPane& operator=(const PermissionsPane&) = delete;

    // The pane comes on screen: both grants are read again.
    void appear() { reread(); }

    SettingsPage page() const;

    void changed() const;

private:
    using Anchor = WeakAnchor<PermissionsPane>;

    SettingsBanner statusBanner() const;
    SettingsCard accessCard() const;
    SettingsCard refreshCard() const;
    // One grant's row: the status word, and a button while it is missing.
    static SettingsRow permissionRow(std::string icon, Tint tint, std::string title,
                                     std::string subtitle, bool granted,
                                     std::function<void()> grant);
    void reread() { grants_ = PermissionGrants::read(context_); }

    SettingsPaneContext context_;
    PermissionGrants grants_;
    Anchor anchor_{this};
};

} // namespace quillet
