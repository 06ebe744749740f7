#include "sim/settings/SimulatedSettingsWindows.hpp"

#include "sim/settings/SettingsText.hpp"

namespace quillet::sim {

namespace {

// Calls a copy: the call may replace the content that holds the original.
template <class Function, class... Args> bool call(const Function& function, Args&&... arguments) {
    if (!function) {
        return false;
    }
    Function copy = function;
    copy(std::forward<Args>(arguments)...);
    return true;
}

template <class Control> std::optional<Control> controlOf(const SettingsRow& row) {
    for (const SettingsControl& control : row.trailing.controls) {
        if (const auto* found = std::get_if<Control>(&control)) {
            return *found;
        }
    }
    return std::nullopt;
}

std::optional<std::string> tagOf(const std::vector<SettingsChoice>& choices,
                                 const std::string& title) {
    for (const auto& choice : choices) {
        if (choice.title == title) {
            return choice.tag;
        }
    }
    return std::nullopt;
}

} // namespace

void SimSettingsWindow::setContent(const SettingsWindowContent& content) {
    content_ = content;
    ++renders_;
}

Size SimSettingsWindow::frameSize() const {
    return {style_.contentSize.width, style_.contentSize.height + kTitleBarHeight};
}

bool SimSettingsWindow::close() {
    if (!visible_) {
        return false;
    }
    if (willClose_) {
        willClose_();
    }
    visible_ = false;
    return true;
}

bool SimSettingsWindow::selectPane(const std::string& title) {
    if (!usable()) {
        return false;
    }
    for (const auto& entry : content_.sidebar) {
        if (entry.title == title) {
            return call(content_.select, entry.tag);
        }
    }
    return false;
}

std::optional<SettingsRow> SimSettingsWindow::findRow(const std::string& title) const {
    for (const SettingsCardItem* entry : cardEntries()) {
        if (const auto* row = std::get_if<SettingsRow>(entry); row && row->title == title) {
            return *row;
        }
        if (const auto* toggle = std::get_if<SettingsToggleRow>(entry);
            toggle && toggle->title == title) {
            return toggle->row();
        }
        // Of two items with the same name, the first one listed.
        if (const auto* item = std::get_if<SettingsItemRow>(entry); item && item->title == title) {
            return item->row();
        }
    }
    return std::nullopt;
}

bool SimSettingsWindow::flip(const std::string& rowTitle) {
    auto row = findRow(rowTitle);
    auto toggle = row ? controlOf<SettingsSwitch>(*row) : std::nullopt;
    return toggle && call(toggle->setOn, !toggle->isOn);
}

bool SimSettingsWindow::step(const std::string& rowTitle, int direction) {
    auto row = findRow(rowTitle);
    auto stepper = row ? controlOf<SettingsStepper>(*row) : std::nullopt;
    if (!stepper) {
        return false;
    }
    // An arrow at the end of the range does nothing, as NSStepper's does.
    const std::int64_t next = stepper->stepped(direction);
    return next == stepper->shownValue() || call(stepper->setValue, next);
}

bool SimSettingsWindow::pick(const std::string& rowTitle, const std::string& choiceTitle) {
    auto row = findRow(rowTitle);
    if (!row) {
        return false;
    }
    if (auto popUp = controlOf<SettingsPopUp>(*row)) {
        auto tag = tagOf(popUp->choices, choiceTitle);
        return tag && call(popUp->pick, *tag);
    }
    if (auto picker = controlOf<SettingsSegmentedPicker>(*row)) {
        auto tag = tagOf(picker->segments, choiceTitle);
        return tag && call(picker->pick, *tag);
    }
    return false;
}

bool SimSettingsWindow::press(const std::string& title, const std::string& rowTitle) {
    if (!visible_) {
        return false;
    }
    if (content_.alert) {
        for (const auto& button : content_.alert->buttons) {
            if (button.title == title) {
                return call(button.action);
            }
        }
        return false;
    }
    if (!rowTitle.empty()) {
        auto row = findRow(rowTitle);
        auto button = row ? controlOf<SettingsButton>(*row) : std::nullopt;
        return button && button->title == title && call(button->action);
    }
    for (const SettingsPageItem& item : content_.detail.content) {
        if (const auto* banner = std::get_if<SettingsBanner>(&item)) {
            if (banner->hasButton() && *banner->actionTitle == title) {
                return call(banner->action);
            }
            continue;
        }
        if (const auto* bar = std::get_if<SettingsSearchBar>(&item)) {
            // A symbol button is named by its tooltip, as VoiceOver reads it.
            for (const SettingsButton& button : bar->buttons) {
                if ((button.title.empty() ? button.toolTip : button.title) == title) {
                    return call(button.action);
                }
            }
            continue;
        }
        const auto* card = std::get_if<SettingsCard>(&item);
        for (const SettingsCardItem& entry :
             card ? card->content : std::vector<SettingsCardItem>{}) {
            const auto* row = std::get_if<SettingsRow>(&entry);
            auto button = row ? controlOf<SettingsButton>(*row) : std::nullopt;
            if (button && button->title == title) {
                return call(button->action);
            }
        }
    }
    return false;
}

bool SimSettingsWindow::type(const std::string& text) {
    return visible_ && content_.alert && call(content_.alert->field.setText, text);
}

const SettingsSearchBar* SimSettingsWindow::searchBar() const {
    if (!usable()) {
        return nullptr;
    }
    for (const SettingsPageItem& item : content_.detail.content) {
        if (const auto* bar = std::get_if<SettingsSearchBar>(&item)) {
            return bar;
        }
    }
    return nullptr;
}

bool SimSettingsWindow::search(const std::string& text) {
    const SettingsSearchBar* bar = searchBar();
    if (!bar || !call(bar->field.setText, std::string())) {
        return false;
    }
    // A character at a time: the list below follows every keystroke.
    for (std::size_t end = 1; end <= text.size(); ++end) {
        const bool midCharacter =
            end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80;
        bar = searchBar();
        if (!midCharacter && (!bar || !call(bar->field.setText, text.substr(0, end)))) {
            return false;
        }
    }
    return true;
}

bool SimSettingsWindow::clearSearch() {
    const SettingsSearchBar* bar = searchBar();
    if (!bar) {
        return false;
    }
    for (const SettingsButton& button : bar->buttons) {
        if (button.symbol == "xmark.circle.fill") {
            return call(button.action);
        }
    }
    return false;
}

std::vector<std::string> SimSettingsWindow::render() const {
    return SettingsText::render(style_.title, content_);
}

std::optional<std::string> SimSettingsWindow::rowLine(const std::string& rowTitle) const {
    if (const SettingsItemRow* item = findItemRow(rowTitle)) {
        return SettingsText::itemRowLine(*item);
    }
    auto row = findRow(rowTitle);
    return row ? std::optional(SettingsText::rowLine(*row)) : std::nullopt;
}

const SettingsItemRow* SimSettingsWindow::findItemRow(const std::string& title) const {
    for (const SettingsCardItem* entry : cardEntries()) {
        if (const auto* row = std::get_if<SettingsItemRow>(entry); row && row->title == title) {
            return row;
        }
    }
    return nullptr;
}

std::vector<const SettingsCardItem*> SimSettingsWindow::cardEntries() const {
    std::vector<const SettingsCardItem*> entries;
    if (!usable()) {
        return entries;
    }
    for (const SettingsPageItem& item : content_.detail.content) {
        if (const auto* card = std::get_if<SettingsCard>(&item)) {
            for (const SettingsCardItem& entry : card->content) {
                entries.push_back(&entry);
            }
        }
    }
    return entries;
}

std::shared_ptr<SettingsWindow>
SimulatedSettingsWindows::createWindow(const SettingsWindowStyle& style,
                                       std::function<void()> willClose) {
    windows_.push_back(std::make_shared<SimSettingsWindow>(style, std::move(willClose)));
    return windows_.back();
}

} // namespace quillet::sim
