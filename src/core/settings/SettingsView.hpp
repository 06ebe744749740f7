#pragma once

#include "core/ports/SettingsWindowHost.hpp"
#include "core/settings/SettingsPane.hpp"
#include "core/settings/SettingsPaneContext.hpp"
#include "core/support/WeakAnchor.hpp"

#include <memory>
#include <variant>

namespace quillet {

class GeneralPane;
class ItemsPane;
class PermissionsPane;

// The window's root: the sidebar of panes and the selected pane. Selecting a pane creates it
// afresh, so each starts again from its own initial state; the selection itself lives as long
// as the view. Main thread only.
class SettingsView {
public:
    SettingsView(SettingsPaneContext context, SettingsPane initial);
    ~SettingsView();
    SettingsView(const SettingsView&) = delete;
    SettingsView& operator=(const SettingsView&) = delete;

    SettingsPane pane() const { return pane_; }
    void select(SettingsPane pane);
    // The selected pane comes on screen.
    void appear();

    SettingsWindowContent content() const;

    void changed() const;

private:
    using Detail = std::variant<std::unique_ptr<GeneralPane>, std::unique_ptr<ItemsPane>,
                                std::unique_ptr<PermissionsPane>>;

    SettingsPage detailPage() const;

    SettingsPaneContext context_;
    SettingsPane pane_;
    Detail detail_;
    WeakAnchor<SettingsView> anchor_{this};
};

} // namespace quillet
