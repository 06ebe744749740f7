#pragma once

#include "core/ports/SettingsWindowHost.hpp"

namespace quillet::macos {

// The settings window: an NSWindow around a split view controller with the panes in a source
// list sidebar and the selected pane's page drawn by SettingsPageRenderer; an alert the content
// asks for runs as a sheet on it. Main thread only.
class AppKitSettingsWindowHost final : public SettingsWindowHost {
public:
    std::shared_ptr<SettingsWindow> createWindow(const SettingsWindowStyle& style,
                                                 std::function<void()> willClose) override;
};

} // namespace quillet::macos
