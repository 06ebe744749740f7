#include "sim/settings/SettingsText.hpp"

#include <algorithm>
#include <cctype>

namespace quillet::sim::SettingsText {

namespace {

// Where a row's controls start, in characters.
constexpr std::size_t kControlColumn = 52;

std::size_t characters(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

std::string upper(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string choiceTitle(const std::vector<SettingsChoice>& choices, const std::string& tag) {
    for (const auto& choice : choices) {
        if (choice.tag == tag) {
            return choice.title;
        }
    }
    return "";
}

// The widest text a row shows of an item, in characters.
constexpr std::size_t kItemTextWidth = 40;

// Where each character of UTF-8 text ends, in bytes.
std::vector<std::size_t> characterEnds(const std::string& text) {
    std::vector<std::size_t> ends;
    for (std::size_t at = 1; at <= text.size(); ++at) {
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
            ends.push_back(at);
        }
    }
    return ends;
}

std::string endTruncated(const std::string& text) {
    const auto ends = characterEnds(text);
    if (ends.size() <= kItemTextWidth) {
        return text;
    }
    return text.substr(0, ends[kItemTextWidth - 2]) + "…";
}

// As AppKit truncates in the middle: the start and the end stay, an ellipsis between them.
std::string middleTruncated(const std::string& text) {
    const auto ends = characterEnds(text);
    if (ends.size() <= kItemTextWidth) {
        return text;
    }
    const std::size_t head = (kItemTextWidth - 1) / 2;
    const std::size_t tail = kItemTextWidth - 1 - head;
    return text.substr(0, ends[head - 1]) + "…" + text.substr(ends[ends.size() - tail - 1]);
}

struct ControlText {
    std::string operator()(const SettingsLabel& label) const { return label.text; }
    std::string operator()(const SettingsSwitch& toggle) const {
        return toggle.isOn ? "[on]" : "[off]";
    }
    // The stepper's label is hidden: only its arrows show.
    std::string operator()(const SettingsStepper&) const { return "[−|+]"; }
    std::string operator()(const SettingsPopUp& popUp) const {
        std::string text = "[";
        text += choiceTitle(popUp.choices, popUp.selectedTag);
        text += " ▾]";
        return text;
    }
    std::string operator()(const SettingsSegmentedPicker& picker) const {
        std::string text = "[";
        for (const auto& segment : picker.segments) {
            const bool selected = segment.tag == picker.selectedTag;
            text += (text.size() > 1 ? "|" : "") +
                    (selected ? "*" + segment.title + "*" : segment.title);
        }
        return text + "]";
    }
    std::string operator()(const SettingsButton& button) const {
        return "[" + (button.title.empty() ? "(" + button.symbol + ")" : button.title) + "]";
    }
    std::string operator()(const SettingsSearchField& field) const {
        return "[" + (field.text.empty() ? field.placeholder : field.text) + "]";
    }
    std::string operator()(const SettingsBadge& badge) const { return "(" + badge.text + ")"; }
};

std::string trailing(const SettingsTrailing& trailing) {
    std::string text;
    for (const SettingsControl& item : trailing.controls) {
        text += text.empty() ? "" : " ";
        text += control(item);
    }
    return text;
}

std::string bannerSign(SettingsBanner::Kind kind) {
    switch (kind) {
    case SettingsBanner::Kind::success:
        return "✓";
    case SettingsBanner::Kind::warning:
        return "⚠";
    case SettingsBanner::Kind::info:
        break;
    }
    return "ⓘ";
}

void renderBanner(const SettingsBanner& banner, std::vector<std::string>& lines) {
    std::string first = bannerSign(banner.kind) + " " + banner.title;
    if (banner.hasButton()) {
        first += "  [" + *banner.actionTitle + "]";
    }
    lines.push_back(first);
    if (banner.message) {
        lines.push_back("  " + *banner.message);
    }
}

void renderSearchBar(const SettingsSearchBar& bar, std::vector<std::string>& lines) {
    std::string line = "🔍 " + control(bar.field);
    for (const SettingsButton& button : bar.buttons) {
        line += " " + control(button);
    }
    lines.push_back(line);
}

// How a row's picture reads: the snapshot, the app's icon or the symbol.
std::string pictureText(const SettingsItemPicture& picture) {
    switch (picture.kind) {
    case SettingsItemPicture::Kind::snapshot:
        return "▣ ";
    case SettingsItemPicture::Kind::appIcon:
        return "◆ ";
    case SettingsItemPicture::Kind::symbol:
        break;
    }
    return "(" + picture.symbol + ") ";
}

void renderCard(const SettingsCard& card, std::vector<std::string>& lines) {
    if (card.title) {
        lines.push_back(upper(*card.title));
    }
    lines.push_back("╭");
    for (const SettingsCardItem& item : card.content) {
        if (std::holds_alternative<SettingsRowDivider>(item)) {
            lines.push_back("├──");
            continue;
        }
        if (const auto* itemRow = std::get_if<SettingsItemRow>(&item)) {
            lines.push_back("│ " + itemRowLine(*itemRow));
            lines.push_back("│   " + middleTruncated(itemRow->subtitle));
            continue;
        }
        const SettingsRow row = std::holds_alternative<SettingsRow>(item)
                                    ? std::get<SettingsRow>(item)
                                    : std::get<SettingsToggleRow>(item).row();
        lines.push_back("│ " + rowLine(row));
        if (row.subtitle) {
            lines.push_back("│   " + *row.subtitle);
        }
    }
    lines.push_back("╰");
    if (card.footer) {
        lines.push_back("  " + *card.footer);
    }
}

void renderAlert(const SettingsTextAlert& alert, std::vector<std::string>& lines) {
    lines.push_back("┌ " + alert.title);
    lines.push_back("│ " + alert.message);
    lines.push_back("│ " + control(alert.field));
    std::string buttons;
    for (const auto& button : alert.buttons) {
        buttons += buttons.empty() ? "" : " ";
        buttons += control(button);
    }
    lines.push_back("└ " + buttons);
}

} // namespace

std::string control(const SettingsControl& item) {
    return std::visit(ControlText{}, item);
}

std::string rowLine(const SettingsRow& row) {
    const std::string controls = trailing(row.trailing);
    if (controls.empty()) {
        return row.title;
    }
    const std::size_t width = characters(row.title);
    return row.title + std::string(width + 2 < kControlColumn ? kControlColumn - width : 2, ' ') +
           controls;
}

std::string itemRowLine(const SettingsItemRow& row) {
    // An item's name keeps to one line, cut at its end when too long.
    SettingsRow general = row.row();
    general.title = pictureText(row.picture) + endTruncated(row.title);
    return rowLine(general);
}

std::vector<std::string> render(const std::string& title, const SettingsWindowContent& content) {
    std::vector<std::string> lines{"═══ " + title + " ═══"};
    std::string sidebar;
    for (const auto& entry : content.sidebar) {
        const bool selected = entry.tag == content.selectedTag;
        sidebar += (sidebar.empty() ? "" : "   ") + (selected ? "▸ " + entry.title : entry.title);
    }
    lines.push_back(sidebar);
    lines.push_back("");
    const SettingsPage& page = content.detail;
    lines.push_back(page.title);
    if (page.subtitle) {
        lines.push_back(*page.subtitle);
    }
    for (const SettingsPageItem& item : page.content) {
        lines.push_back("");
        if (const auto* banner = std::get_if<SettingsBanner>(&item)) {
            renderBanner(*banner, lines);
        } else if (const auto* bar = std::get_if<SettingsSearchBar>(&item)) {
            renderSearchBar(*bar, lines);
        } else if (const auto* caption = std::get_if<SettingsCaption>(&item)) {
            lines.push_back(caption->text);
        } else {
            renderCard(std::get<SettingsCard>(item), lines);
        }
    }
    if (content.alert) {
        lines.push_back("");
        renderAlert(*content.alert, lines);
    }
    return lines;
}

} // namespace quillet::sim::SettingsText
