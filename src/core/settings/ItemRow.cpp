#include "core/settings/ItemRow.hpp"

#include "core/engine/ControlItemManager.hpp"
#include "core/engine/RuleKey.hpp"
#include "core/menubar/AppIcon.hpp"
#include "core/prefs/AppPreferences.hpp"

namespace quillet {

namespace {

// The width that fits the four segments' titles in the system font.
constexpr double kPickerWidth = 236;

} // namespace

ItemRow::ItemRow(MenuBarItem item, AppPreferences& preferences, const MenuBarAccess& menuBar,
                 ImageRef snapshot)
    : item_(std::move(item)), preferences_(preferences), menuBar_(menuBar),
      snapshot_(std::move(snapshot)), ruleKey_(ruleKey(item_)) {}

std::vector<MenuBarSection> ItemRow::sections() const {
    if (item_.systemInfo) {
        return {MenuBarSection::visible, MenuBarSection::hidden, MenuBarSection::alwaysHidden};
    }
    return {allMenuBarSections.begin(), allMenuBarSections.end()};
}

MenuBarSection ItemRow::section() const {
    return ruledSection(preferences_.sectionByBundleID(), ruleKey_);
}

void ItemRow::choose(MenuBarSection section) const {
    if (!ruleKey_) {
        return;
    }
    preferences_.setSection(section, *ruleKey_);
    auto manager = menuBar_.controlItemManager ? menuBar_.controlItemManager() : nullptr;
    if (!manager) {
        return;
    }
    // The front application monitor brings a dynamic item out when its app comes forward.
    manager->enforce(ruleKey_, item_.windowID,
                     section == MenuBarSection::dynamic ? MenuBarSection::hidden : section);
}

bool ItemRow::isFixed() const {
    return item_.systemInfo && (!item_.systemInfo->movable || !item_.systemInfo->hideable);
}

SettingsItemPicture ItemRow::picture() const {
    if (snapshot_) {
        return {SettingsItemPicture::Kind::snapshot, snapshot_, ""};
    }
    if (!item_.systemInfo) {
        return {SettingsItemPicture::Kind::appIcon, menuBar_.icons.forBundleID(item_.bundleID), ""};
    }
    return {SettingsItemPicture::Kind::symbol, nullptr, item_.systemInfo->symbolName};
}

std::string ItemRow::subtitle() const {
    return item_.bundleID.value_or(item_.windowName.value_or("—"));
}

std::optional<SettingsControl> ItemRow::trailingControl() const {
    if (isFixed()) {
        return SettingsBadge{"Always visible"};
    }
    if (!ruleKey_) {
        return std::nullopt;
    }
    SettingsSegmentedPicker picker{.segments = {},
                                   .selectedTag = std::string(rawValue(section())),
                                   .width = kPickerWidth,
                                   .toolTip = std::string(kMenuBarSectionExplanation),
                                   .pick = [row = *this](const std::string& tag) {
                                       if (auto chosen = menuBarSection(tag)) {
                                           row.choose(*chosen);
                                       }
                                   }};
    for (MenuBarSection offered : sections()) {
        picker.segments.push_back(
            {std::string(shortLabel(offered)), std::string(rawValue(offered))});
    }
    return picker;
}

SettingsItemRow ItemRow::row() const {
    SettingsItemRow row{picture(), item_.displayLabel, subtitle(), {}};
    if (auto control = trailingControl()) {
        row.trailing.controls.push_back(std::move(*control));
    }
    return row;
}

} // namespace quillet
