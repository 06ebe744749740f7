#pragma once

#include "core/ports/Geometry.hpp"
#include "core/settings/SettingsComponents.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

// How the settings window is made (NSWindow's properties, with AppKit's values).
struct SettingsWindowStyle {
    std::string title;
    std::uint64_t styleMask = 0;
    Size contentSize;
    Size minSize;
    bool releasedWhenClosed = false;
    bool titlebarAppearsTransparent = false;
};

// One pane in the sidebar.
struct SettingsSidebarEntry {
    std::string tag;
    std::string title;
    std::string symbol; // drawn hierarchically in `tint`
    Tint tint = Tint::accent;
};

// Everything the window shows: the sidebar with its selection, the selected pane's page and,
// over it, an alert when one is open. Picking a sidebar entry calls `select` with its tag.
struct SettingsWindowContent {
    std::vector<SettingsSidebarEntry> sidebar;
    std::string selectedTag;
    std::function<void(const std::string&)> select;
    SettingsPage detail;
    std::optional<SettingsTextAlert> alert;
};

// The settings window (NSWindow with a sidebar split view). Main thread only.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;
    // Draws `content`, keeping what stays the same in place (the focus, typing, scrolling).
    virtual void setContent(const SettingsWindowContent& content) = 0;
    // The frame's size, title bar included.
    virtual Size frameSize() const = 0;
    // AppKit coordinates.
    virtual void setFrameOrigin(Point origin) = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void orderFrontRegardless() = 0;
};

class SettingsWindowHost {
public:
    virtual ~SettingsWindowHost() = default;
    // A window that is not shown yet; `willClose` runs each time the user closes it (the window
    // delegate's windowWillClose:). The window survives closing.
    virtual std::shared_ptr<SettingsWindow> createWindow(const SettingsWindowStyle& style,
                                                         std::function<void()> willClose) = 0;
};

} // namespace quillet
