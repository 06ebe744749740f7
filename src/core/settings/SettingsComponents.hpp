#pragma once

#include "core/ports/PlatformImage.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quillet {

// The settings window's kit: plain values that say what each pane shows, with actions that call
// back into the core. A renderer lays any page out (AppKit on a Mac, text in the simulator);
// how each component looks is in SettingsLook.

// The platform's semantic colours, as the kit uses them.
enum class Tint {
    gray,
    indigo,
    orange,
    green,
    purple,
    cyan,
    blue,
    teal,
    red,
    accent,
    primary,
    secondary,
    tertiary
};

// Text styles of the platform (body, subheadline, caption) with a weight.
enum class TextStyle { body, subheadline, caption };
enum class FontWeight { regular, medium, semibold, bold };

// A short text beside a row's controls, such as a status word.
struct SettingsLabel {
    std::string text;
    TextStyle style = TextStyle::caption;
    FontWeight weight = FontWeight::regular;
    Tint tint = Tint::secondary;
};

// A switch-style toggle without a visible label.
struct SettingsSwitch {
    bool isOn = false;
    std::function<void(bool)> setOn;
};

// Up and down arrows over a whole number in [minimum, maximum]; its label is hidden, so the
// number itself is not shown.
struct SettingsStepper {
    std::int64_t value = 0;
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t step = 1;
    std::function<void(std::int64_t)> setValue;

    // What the arrows start from: a value out of range is taken as the nearest end, as the
    // platform's stepper does.
    std::int64_t shownValue() const;
    // The value one step up (+1) or down (-1) from there, kept in range.
    std::int64_t stepped(int direction) const;
};

// One choice of a pop-up menu or a segmented picker: what it shows and what it stands for.
struct SettingsChoice {
    std::string title;
    std::string tag;
    friend bool operator==(const SettingsChoice&, const SettingsChoice&) = default;
};

// A pop-up menu with a hidden label, at its ideal size.
struct SettingsPopUp {
    std::vector<SettingsChoice> choices;
    std::string selectedTag;
    std::function<void(const std::string&)> pick;
};

// A segmented picker with a hidden label.
struct SettingsSegmentedPicker {
    std::vector<SettingsChoice> segments;
    std::string selectedTag;
    double width = 0;
    std::string toolTip;
    std::function<void(const std::string&)> pick;
};

struct SettingsButton {
    enum class Style { bordered, borderless, plain };
    enum class Role { normal, destructive, cancel };
    std::string title;
    // An SF Symbol shown instead of a title.
    std::string symbol;
    Style style = Style::bordered;
    bool small = true;
    Role role = Role::normal;
    std::string toolTip;
    std::function<void()> action;

    // A small bordered button with a title.
    static SettingsButton titled(std::string title, std::function<void()> action);
    // A button that shows an SF Symbol in the secondary colour; the tooltip, if any, names it.
    static SettingsButton symbolic(std::string symbol, Style style, std::string toolTip,
                                   std::function<void()> action);
};

// A plain text field with a placeholder.
struct SettingsSearchField {
    std::string placeholder;
    std::string text;
    std::function<void(const std::string&)> setText;
};

// A small capsule with a caption on it.
struct SettingsBadge {
    std::string text;
};

using SettingsControl =
    std::variant<SettingsLabel, SettingsSwitch, SettingsStepper, SettingsPopUp,
                 SettingsSegmentedPicker, SettingsButton, SettingsSearchField, SettingsBadge>;

// What sits at a row's trailing end: controls side by side.
struct SettingsTrailing {
    double spacing = 0;
    std::vector<SettingsControl> controls;
};

struct SettingsIconWell {
    std::string systemName;
    Tint tint = Tint::accent;
};

struct SettingsRow {
    std::string icon;
    Tint iconTint = Tint::accent;
    std::string title;
    std::optional<std::string> subtitle;
    SettingsTrailing trailing;

    SettingsIconWell iconWell() const { return {icon, iconTint}; }
};

// A row whose trailing control is a switch bound to the caller's Boolean.
struct SettingsToggleRow {
    std::string icon;
    Tint iconTint = Tint::accent;
    std::string title;
    std::optional<std::string> subtitle;
    bool isOn = false;
    std::function<void(bool)> setOn;

    // The same row in its general form.
    SettingsRow row() const;
};

// The picture of a menu bar item: a snapshot of the item (on a dark plate, as it looks in the
// menu bar), its application's icon, or an SF Symbol in the secondary colour.
struct SettingsItemPicture {
    enum class Kind { snapshot, appIcon, symbol };
    Kind kind = Kind::symbol;
    ImageRef image;     // snapshot and appIcon
    std::string symbol; // symbol
};

// A menu bar item's row, in the item list's look (SettingsLook::ItemRow): its picture in a
// neutral well, its name on one line, where it comes from (cut in the middle when too long) and
// its controls.
struct SettingsItemRow {
    SettingsItemPicture picture;
    std::string title;
    std::string subtitle;
    SettingsTrailing trailing;

    // The same row in its general form, without the picture.
    SettingsRow row() const;
};

// A thin line between two rows of a card, indented to start under the row text.
struct SettingsRowDivider {};

using SettingsCardItem =
    std::variant<SettingsRow, SettingsToggleRow, SettingsRowDivider, SettingsItemRow>;

struct SettingsCard {
    std::optional<std::string> title;
    std::optional<std::string> footer;
    std::vector<SettingsCardItem> content;
};

struct SettingsBanner {
    enum class Kind { success, warning, info };
    Kind kind = Kind::info;
    std::string title;
    std::optional<std::string> message;
    std::optional<std::string> actionTitle;
    std::function<void()> action;

    // The button shows only with both a title and an action.
    bool hasButton() const { return actionTitle.has_value() && static_cast<bool>(action); }
    static std::string_view symbol(Kind kind);
    static Tint tint(Kind kind);
};

// A search field across the page: an SF Symbol in the secondary colour, the field, then its
// buttons (such as clearing the search or loading again).
struct SettingsSearchBar {
    std::string symbol;
    SettingsSearchField field;
    std::vector<SettingsButton> buttons;
};

// A line of small secondary text between the page's cards.
struct SettingsCaption {
    std::string text;
};

using SettingsPageItem =
    std::variant<SettingsBanner, SettingsCard, SettingsSearchBar, SettingsCaption>;

struct SettingsPage {
    std::string title;
    std::optional<std::string> subtitle;
    std::vector<SettingsPageItem> content;
};

// An alert over the window that asks for a line of text.
struct SettingsTextAlert {
    std::string title;
    std::string message;
    SettingsSearchField field;
    // Left to right as the platform orders them: the default button first.
    std::vector<SettingsButton> buttons;
};

// Adds `item` to `card`, preceded by a divider unless it is the card's first row.
void appendRow(SettingsCard& card, SettingsCardItem item);

// What a page is made of, without its texts, values and actions: two pages of the same shape
// differ only in what their views show, so a renderer may update its views in place.
std::string shapeOf(const SettingsPage& page);

} // namespace quillet
