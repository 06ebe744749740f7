#pragma once

#import <AppKit/AppKit.h>

#include "core/ports/StatusBarHost.hpp"
#include "core/ports/Updater.hpp"

@class QuilletStatusItemTarget;

namespace quillet::macos {

// One NSStatusItem and its button. The status bar does not retain its items, and buttons and
// menu items hold their targets weakly, so this object keeps both alive.
class AppKitStatusItem final : public StatusItem {
public:
    // `updater` receives the menu entries addressed to the update controller; it must outlive
    // the item.
    AppKitStatusItem(NSStatusItem* item, Updater& updater);

    NSStatusItem* statusItem() const { return item_; }

    double length() const override;
    void setLength(double length) override;
    void setAutosaveName(const std::string& name) override;
    std::string autosaveName() const override;

    bool hasButton() const override;
    void setImage(const std::optional<SymbolImage>& image) override;
    void setToolTip(const std::optional<std::string>& toolTip) override;
    void setAction(std::function<void(std::optional<ButtonEvent>)> handler,
                   std::uint64_t sendActionOnMask) override;
    double buttonHeight() const override;
    std::optional<Rect> windowFrame() const override;
    void popUpMenu(const std::vector<MenuEntry>& entries, Point location,
                   std::function<void(const std::string& action)> perform) override;

private:
    // An item entry (not a separator) as a menu item.
    NSMenuItem* menuItem(const MenuEntry& entry,
                         const std::function<void(const std::string&)>& perform) const;

    NSStatusItem* item_;
    QuilletStatusItemTarget* buttonTarget_ = nil;
    Updater& updater_;
};

// The system status bar (NSStatusBar.systemStatusBar).
class AppKitStatusBarHost final : public StatusBarHost {
public:
    // `updater` must outlive every item this host creates.
    explicit AppKitStatusBarHost(Updater& updater) : updater_(updater) {}

    std::shared_ptr<StatusItem> createStatusItem(double length) override;
    void removeStatusItem(const std::shared_ptr<StatusItem>& item) override;

private:
    Updater& updater_;
};

} // namespace quillet::macos
