#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

// NSStatusItem's variable length.
inline constexpr double kVariableStatusItemLength = -1.0;

enum class SymbolWeight { regular, black };

// A system symbol image for a status item's button.
struct SymbolImage {
    std::string symbolName;
    std::string accessibilityDescription;
    bool isTemplate = true;
    // A symbol configuration, when the image asks for one.
    std::optional<double> pointSize;
    std::optional<SymbolWeight> weight;
    friend bool operator==(const SymbolImage&, const SymbolImage&) = default;
};

// The application's current event when a button sent its action: its type (the window server's
// event type number) and modifier flags.
struct ButtonEvent {
    std::uint32_t type = 0;
    std::uint64_t modifierFlags = 0;
    friend bool operator==(const ButtonEvent&, const ButtonEvent&) = default;
};

// One entry of a menu as data; the adapter renders it.
struct MenuEntry {
    enum class Kind { item, separator };
    // Who receives the action: the core's handler, the updater's controller
    // ("checkForUpdates:") or the application itself ("terminate:").
    enum class Target { handler, updater, application };

    Kind kind = Kind::item;
    std::string title;
    std::string action;
    std::string keyEquivalent;
    bool checked = false;
    Target target = Target::handler;
    friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

// One status item in the system status bar (NSStatusItem and its button).
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual double length() const = 0;
    virtual void setLength(double length) = 0;
    virtual void setAutosaveName(const std::string& name) = 0;
    // Empty until one is set.
    virtual std::string autosaveName() const = 0;

    // Button properties; items without a button ignore them.
    virtual bool hasButton() const = 0;
    virtual void setImage(const std::optional<SymbolImage>& image) = 0;
    virtual void setToolTip(const std::optional<std::string>& toolTip) = 0;
    // The handler runs when the button sends its action, for the events in `sendActionOnMask`
    // (NSEvent masks); it receives the application's current event, if there is one.
    virtual void setAction(std::function<void(std::optional<ButtonEvent>)> handler,
                           std::uint64_t sendActionOnMask) = 0;
    virtual double buttonHeight() const = 0;
    // The frame of the button's window (button.window.frame) as AppKit has placed it: screen
    // coordinates, origin at the bottom left of the primary screen. It follows the item wherever
    // the bar puts it, since menus and popovers are anchored to it; nullopt without a window.
    virtual std::optional<Rect> windowFrame() const = 0;
    // Pops up `entries` at `location` in the button's own coordinates, with no entry positioned
    // under the pointer; a chosen handler entry calls `perform` with its action.
    virtual void popUpMenu(const std::vector<MenuEntry>& entries, Point location,
                           std::function<void(const std::string& action)> perform) = 0;
};

// The system status bar (NSStatusBar.systemStatusBar).
class StatusBarHost {
public:
    virtual ~StatusBarHost() = default;
    virtual std::shared_ptr<StatusItem> createStatusItem(double length) = 0;
    virtual void removeStatusItem(const std::shared_ptr<StatusItem>& item) = 0;
};

} // namespace quillet
