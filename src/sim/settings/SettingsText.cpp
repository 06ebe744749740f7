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

struct ControlText {
    std::string operator()(const SettingsLabel& label) const { return label.text; }
    std::string operator()(const SettingsSwitch& toggle) const {
        return toggle.isOn ? "[on]" : "[off]";
    }
    // The stepper's label is hidden: only its arrows show.
    std::string operator()(const SettingsStepper&) const { return "[−|+]"; }
    std::string operator()(const SettingsPopUp& popUp) const {
        // Appended piece by piece: GCC 12's -O2 flags `"[" + std::string&&` with a false
        // -Wrestrict.
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
