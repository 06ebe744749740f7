#include "core/settings/ItemsPane.hpp"

#include "core/engine/ControlItemManager.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/AppIcon.hpp"
#include "core/menubar/HostedItemEnumerator.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/menubar/ItemImageCapture.hpp"
#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/ScreenCapture.hpp"
#include "core/settings/ItemRow.hpp"
#include "core/support/Text.hpp"

#include <algorithm>
#include <set>

namespace quillet {

namespace {

constexpr std::string_view kSubtitle =
    "Choose what stays visible, hides on demand, or shows only when its app is active.";
constexpr std::string_view kLockedMessage =
    "Grant Accessibility or Screen Recording to label each icon. Hide and show still work.";
constexpr std::string_view kApplePrefix = "com.apple.";

// What each rule does on the hosted menu bar of macOS 27, where Quillet cannot move items.
SettingsCard hostedRulesCard() {
    SettingsCard card{"On this Mac", "Quillet can’t move menu bar items on this macOS.", {}};
    appendRow(card, SettingsRow{"eye", Tint::accent, "Show", "Stays in the menu bar.", {}});
    appendRow(card, SettingsRow{"eye.slash",
                                Tint::accent,
                                "Hide",
                                "Hidden while collapsed once you ⌘-drag it left of ••• yourself.",
                                {}});
    appendRow(card, SettingsRow{"nosign",
                                Tint::accent,
                                "Always",
                                "Only macOS can: turn off “Allow in the Menu Bar” for its app.",
                                {}});
    appendRow(card, SettingsRow{"sparkles",
                                Tint::accent,
                                "Auto",
                                "Like Hide, and the hidden items show while its app is in front.",
                                {}});
    return card;
}

bool isSystem(const MenuBarItem& item) {
    return item.systemInfo || (item.bundleID && item.bundleID->starts_with(kApplePrefix));
}

} // namespace

ItemsPane::ItemsPane(SettingsPaneContext context) : context_(std::move(context)) {}

void ItemsPane::changed() const {
    if (context_.changed) {
        context_.changed();
    }
}

void ItemsPane::reload() {
    // Either grant names the items; Screen Recording is not asked about once Accessibility is
    // known.
    const bool trusted = context_.accessibility.isTrusted(false);
    canIdentify_ = trusted || context_.screenCapture.preflight();
    const MenuBarAccess& menuBar = context_.menuBar;
    if (isHostedBar()) {
        // No item has a window of its own there: the host's tree says whose each item is.
        items_ = menuBar.hosted.applicationItems(menuBar.ownPID);
        rawCount_ = static_cast<int>(items_.size());
    } else {
        readWindows(trusted);
    }
    menuBar.icons.forgetIcons();
    rowsChanged();
}

void ItemsPane::readWindows(bool trusted) {
    const MenuBarAccess& menuBar = context_.menuBar;
    auto raw = menuBar.enumerator.rawItems(menuBar.ownPID);
    rawCount_ = static_cast<int>(raw.size());
    // Without Screen Recording the window list of macOS 26 names no item; with Accessibility the
    // applications still say where their items are, and a user can rule them.
    if (trusted) {
        menuBar.enumerator.nameUntitledByAccessibility(raw, menuBar.reporter, menuBar.ownPID);
    }
    items_ = menuBar.enumerator.logicalItems(std::move(raw));
}

void ItemsPane::reloadWithRetry(int attempt) {
    reload();
    // Raw windows without logical items are not retried: looking again would name nothing more.
    if (rawCount_ == 0 && attempt < kMaxRetries) {
        context_.scheduler.postAfter(kRetryDelay, paneAction(anchor_, [attempt](ItemsPane& pane) {
                                         pane.reloadWithRetry(attempt + 1);
                                     }));
    }
}

void ItemsPane::setSearch(std::string search) {
    search_ = std::move(search);
    rowsChanged();
}

std::vector<MenuBarItem> ItemsPane::filtered() const {
    const std::string query = lowercased(trimmedSpacesAndTabs(search_));
    if (query.empty()) {
        return items_;
    }
    std::vector<MenuBarItem> matches;
    std::copy_if(items_.begin(), items_.end(), std::back_inserter(matches),
                 [&query](const MenuBarItem& item) {
                     return lowercased(item.displayLabel).find(query) != std::string::npos ||
                            (item.bundleID &&
                             lowercased(*item.bundleID).find(query) != std::string::npos);
                 });
    return matches;
}

ItemsPane::Groups ItemsPane::grouped() const {
    std::vector<MenuBarItem> sorted = filtered();
    std::stable_sort(sorted.begin(), sorted.end(), [](const MenuBarItem& a, const MenuBarItem& b) {
        return localizedCaseInsensitiveCompare(a.displayLabel, b.displayLabel) < 0;
    });
    Groups groups;
    for (MenuBarItem& item : sorted) {
        (isSystem(item) ? groups.system : groups.apps).push_back(std::move(item));
    }
    return groups;
}

std::string ItemsPane::headerText() const {
    const std::string total = std::to_string(items_.size());
    if (!search_.empty()) {
        return std::to_string(filtered().size()) + " of " + total + " items";
    }
    if (!canIdentify_ && !items_.empty()) {
        return total + " items (identification needs permission)";
    }
    return total + " items";
}

void ItemsPane::rowsChanged() {
    std::set<WindowID> onScreen;
    for (const MenuBarItem& item : filtered()) {
        onScreen.insert(item.windowID);
    }
    std::erase_if(shownRows_,
                  [&onScreen](const auto& row) { return !onScreen.contains(row.first); });
    for (const MenuBarItem& item : filtered()) {
        if (shownRows_.try_emplace(item.windowID, nullptr).second && item.systemInfo) {
            captureSnapshot(item.windowID);
        }
    }
}

void ItemsPane::captureSnapshot(WindowID window) {
    // The window server's picture is taken off the main thread, so that it never holds up
    // typing in the search field; the image is made of it back on the main thread.
    auto bitmap = std::make_shared<std::optional<CapturedBitmap>>();
    const ItemImageCapture& capture = context_.menuBar.capture;
    context_.scheduler.runInBackground(
        [bitmap, &capture, window] { *bitmap = capture.bitmap(window); },
        paneAction(anchor_, [bitmap, window](ItemsPane& pane) {
            // A row that left the screen meanwhile captures again when it comes back.
            auto row = pane.shownRows_.find(window);
            if (row != pane.shownRows_.end() && *bitmap) {
                row->second = pane.context_.menuBar.capture.image(**bitmap);
            }
        }));
}

SettingsSearchBar ItemsPane::searchBar() const {
    SettingsSearchBar bar{
        "magnifyingglass",
        {"Search menu bar items", search_,
         paneAction(anchor_,
                    [](ItemsPane& pane, const std::string& text) { pane.setSearch(text); })},
        {}};
    if (!search_.empty()) {
        bar.buttons.push_back(SettingsButton::symbolic(
            "xmark.circle.fill", SettingsButton::Style::plain, "",
            paneAction(anchor_, [](ItemsPane& pane) { pane.setSearch(""); })));
    }
    // Once, without retries: the user asked for what is there now.
    bar.buttons.push_back(SettingsButton::symbolic(
        "arrow.clockwise", SettingsButton::Style::borderless, "Refresh list",
        paneAction(anchor_, [](ItemsPane& pane) { pane.reload(); })));
    return bar;
}

SettingsCard ItemsPane::card(std::string title, std::optional<std::string> footer,
                             const std::vector<MenuBarItem>& items) const {
    SettingsCard card{std::move(title), std::move(footer), {}};
    for (const MenuBarItem& item : items) {
        auto snapshot = shownRows_.find(item.windowID);
        appendRow(card, ItemRow(item, context_.preferences, context_.menuBar,
                                snapshot == shownRows_.end() ? nullptr : snapshot->second)
                            .row());
    }
    return card;
}

bool ItemsPane::isHostedBar() const {
    const auto manager =
        context_.menuBar.controlItemManager ? context_.menuBar.controlItemManager() : nullptr;
    return manager && manager->barKind() == BarKind::hosted;
}

SettingsPage ItemsPane::page() const {
    SettingsPage page{"Menu Bar Items", std::string(kSubtitle), {searchBar()}};
    if (isHostedBar()) {
        page.content.emplace_back(hostedRulesCard());
    }
    if (items_.empty()) {
        if (rawCount_ >= 1 && !canIdentify_) {
            page.content.emplace_back(
                SettingsBanner{SettingsBanner::Kind::warning,
                               std::to_string(rawCount_) + " items detected — names locked",
                               std::string(kLockedMessage), "Accessibility",
                               paneAction(anchor_, [](ItemsPane& pane) {
                                   pane.context_.accessibility.isTrusted(true);
                                   pane.reload();
                               })});
        }
        page.content.emplace_back(SettingsBanner{
            SettingsBanner::Kind::info, "No menu bar items yet",
            "Icons appear here once apps register status items. Try Refresh in a moment.",
            std::nullopt, nullptr});
        return page;
    }
    page.content.emplace_back(SettingsCaption{headerText()});
    Groups groups = grouped();
    if (!groups.apps.empty()) {
        page.content.emplace_back(card("Apps", std::nullopt, groups.apps));
    }
    if (!groups.system.empty()) {
        page.content.emplace_back(
            card("macOS", "Some system items can’t move — macOS keeps them fixed.", groups.system));
    }
    return page;
}

} // namespace quillet
