#pragma once

#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/PlatformImage.hpp"
#include "core/prefs/MenuBarSection.hpp"
#include "core/settings/SettingsComponents.hpp"
#include "core/settings/SettingsPaneContext.hpp"

#include <optional>
#include <string>
#include <vector>

namespace quillet {

// One menu bar item in the Items pane: its picture, its name and where it came from, and either
// the section picker that rules it or the reason it has none. Made afresh for every drawing.
class ItemRow {
public:
    // `snapshot` is the picture captured of the item's window, if any.
    ItemRow(MenuBarItem item, AppPreferences& preferences, const MenuBarAccess& menuBar,
            ImageRef snapshot);

    const MenuBarItem& item() const { return item_; }
    // What the picker offers: a system item never shows only while its app is frontmost.
    std::vector<MenuBarSection> sections() const;
    // The item's rule, or visible without one.
    MenuBarSection section() const;
    // Stores the rule, then has the control item manager move the item (an item that shows
    // only while its app is frontmost starts hidden). Without a manager the rule is only
    // stored; an item whose window has gone by then is left to the manager to skip.
    void choose(MenuBarSection section) const;

    SettingsItemRow row() const;

    // Whether macOS keeps the item where it is, whatever the user chooses.
    bool isFixed() const;

private:
    SettingsItemPicture picture() const;
    std::string subtitle() const;
    std::optional<SettingsControl> trailingControl() const;

    MenuBarItem item_;
    AppPreferences& preferences_;
    const MenuBarAccess& menuBar_;
    ImageRef snapshot_;
    std::optional<std::string> ruleKey_;
};

} // namespace quillet
