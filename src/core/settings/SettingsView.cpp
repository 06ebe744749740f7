#include "core/settings/SettingsView.hpp"

#include "core/settings/GeneralPane.hpp"
#include "core/settings/ItemsPane.hpp"
#include "core/settings/PermissionsPane.hpp"

namespace quillet {

SettingsView::SettingsView(SettingsPaneContext context, SettingsPane initial)
    : context_(std::move(context)), pane_(initial) {
    select(initial);
}

SettingsView::~SettingsView() = default;

void SettingsView::changed() const {
    if (context_.changed) {
        context_.changed();
    }
}

void SettingsView::select(SettingsPane pane) {
    pane_ = pane;
    switch (pane) {
    case SettingsPane::general:
        detail_ = std::make_unique<GeneralPane>(context_);
        break;
    case SettingsPane::permissions:
        detail_ = std::make_unique<PermissionsPane>(context_);
        break;
    case SettingsPane::items:
        detail_ = std::make_unique<ItemsPane>(context_);
        break;
    }
    appear();
}

void SettingsView::appear() {
    std::visit([](auto& detail) { detail->appear(); }, detail_);
}

SettingsPage SettingsView::detailPage() const {
    return std::visit([](const auto& detail) { return detail->page(); }, detail_);
}

SettingsWindowContent SettingsView::content() const {
    SettingsWindowContent content;
    for (SettingsPane pane : allSettingsPanes) {
        content.sidebar.push_back({std::string(rawValue(pane)), std::string(title(pane)),
                                   std::string(symbol(pane)), tint(pane)});
    }
    content.selectedTag = rawValue(pane_);
    content.select = paneAction(anchor_, [](SettingsView& view, const std::string& tag) {
        // A click on the selected entry keeps its pane as it is.
        if (auto pane = settingsPane(tag); pane && *pane != view.pane_) {
            view.select(*pane);
        }
    });
    content.detail = detailPage();
    if (const auto* general = std::get_if<std::unique_ptr<GeneralPane>>(&detail_)) {
        content.alert = (*general)->alert();
    }
    return content;
}

} // namespace quillet
