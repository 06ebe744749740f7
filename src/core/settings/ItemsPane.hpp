#pragma once

#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/settings/SettingsComponents.hpp"
#include "core/settings/SettingsPaneContext.hpp"
#include "core/support/WeakAnchor.hpp"

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace quillet {

// The Items pane: every menu bar item the enumerator finds, apps apart from macOS's own, with a
// search and, per item, the section picker that rules it. The list is read on appearing (again
// a few times while the menu bar shows nothing at all), by "Refresh list" and after asking for
// Accessibility; nothing else reloads it. Its state lives while it is shown. Main thread only.
class ItemsPane {
public:
    // Menu bar items may not be there yet just after login: the pane looks again this often, at
    // most this many times, while it sees no item window at all.
    static constexpr int kMaxRetries = 8;
    static constexpr Duration kRetryDelay = std::chrono::milliseconds(250);

    struct Groups {
        std::vector<MenuBarItem> apps;
        std::vector<MenuBarItem> system;
    };

    explicit ItemsPane(SettingsPaneContext context);
    ItemsPane(const ItemsPane&) = delete;
    ItemsPane& operator=(const ItemsPane&) = delete;

    void appear() { reloadWithRetry(0); }
    // Reads the permission and both lists of items again.
    void reload();
    // Reloads and, while no item window is seen, tries again later.
    void reloadWithRetry(int attempt);
    void setSearch(std::string search);

    // The items the search matches (by label or bundle identifier, ignoring case and the
    // spaces around it), in enumeration order.
    std::vector<MenuBarItem> filtered() const;
    // The matches sorted by label, split into other apps' items and the system's.
    Groups grouped() const;
    std::string headerText() const;

    const std::vector<MenuBarItem>& items() const { return items_; }
    int rawCount() const { return rawCount_; }
    bool canIdentify() const { return canIdentify_; }
    const std::string& search() const { return search_; }

    SettingsPage page() const;

    void changed() const;

private:
    using Anchor = WeakAnchor<ItemsPane>;

    SettingsSearchBar searchBar() const;
    // Whether the system hosts the menu bar (macOS 27), where the rules mean less.
    bool isHostedBar() const;
    // The items as the window list shows them (every bar but the hosted one).
    void readWindows(bool trusted);
    SettingsCard card(std::string title, std::optional<std::string> footer,
                      const std::vector<MenuBarItem>& items) const;
    // Rows that came on screen have their system item captured off the main thread; rows that
    // left it forget their picture.
    void rowsChanged();
    void captureSnapshot(WindowID window);

    SettingsPaneContext context_;
    std::vector<MenuBarItem> items_;
    int rawCount_ = 0;
    bool canIdentify_ = false;
    std::string search_;
    // The rows on screen and the picture captured for each, null until (or unless) it came.
    std::map<WindowID, ImageRef> shownRows_;
    Anchor anchor_{this};
};

} // namespace quillet
