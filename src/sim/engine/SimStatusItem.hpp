#pragma once

#include "core/ports/StatusBarHost.hpp"
#include "sim/engine/MenuBarModel.hpp"

#include <memory>

namespace quillet::sim {

// One of our own status items in the simulated bar (an NSStatusItem and its button). Like the
// real status bar, the bar does not keep the item: when the last reference goes, its window
// leaves the bar. Tests click its button and choose from the menu it popped up.
class SimStatusItem : public StatusItem {
public:
    // A menu the item popped up, kept until the next one.
    struct ShownMenu {
        std::vector<MenuEntry> entries;
        Point location;
        std::function<void(const std::string& action)> perform;
    };

    SimStatusItem(std::weak_ptr<MenuBarModel> bar, double length);
    // An item the system made but never placed in any bar: it keeps `birthFrame` (AppKit
    // coordinates) and has no window in the list.
    SimStatusItem(Rect birthFrame, double length);
    ~SimStatusItem() override;
    SimStatusItem(const SimStatusItem&) = delete;
    SimStatusItem& operator=(const SimStatusItem&) = delete;

    double length() const override { return length_; }
    void setLength(double length) override;
    void setAutosaveName(const std::string& name) override;
    bool hasButton() const override { return true; }
    void setImage(const std::optional<SymbolImage>& image) override;
    void setToolTip(const std::optional<std::string>& toolTip) override { toolTip_ = toolTip; }
    void setAction(std::function<void(std::optional<ButtonEvent>)> handler,
                   std::uint64_t sendActionOnMask) override;
    double buttonHeight() const override;
    std::optional<Rect> windowFrame() const override;
    void popUpMenu(const std::vector<MenuEntry>& entries, Point location,
                   std::function<void(const std::string& action)> perform) override;

    // The bar lets go of the item (NSStatusBar removeStatusItem:); later changes go nowhere.
    void leaveBar();
    bool isInBar() const;

    WindowID window() const { return window_; }
    std::string autosaveName() const override { return autosaveName_; }
    const std::optional<SymbolImage>& image() const { return image_; }
    const std::optional<std::string>& toolTip() const { return toolTip_; }
    std::uint64_t sendActionOnMask() const { return actionMask_; }
    const std::optional<ShownMenu>& shownMenu() const { return menu_; }

    // A click whose release is `event` (none: the action is sent without a current event). The
    // action runs when the button sends it on that event type; returns whether it ran.
    bool click(std::optional<ButtonEvent> event);
    // Chooses the shown menu's entry with this title; false when there is none to choose.
    bool chooseMenuEntry(const std::string& title);

private:
    std::weak_ptr<MenuBarModel> bar_;
    WindowID window_ = 0;
    double length_;
    std::string autosaveName_;
    std::optional<SymbolImage> image_;
    std::optional<std::string> toolTip_;
    std::function<void(std::optional<ButtonEvent>)> action_;
    std::uint64_t actionMask_ = 0;
    std::optional<ShownMenu> menu_;
    bool inBar_ = true;
    std::optional<Rect> birthFrame_;
};

} // namespace quillet::sim
