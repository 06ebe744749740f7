#pragma once

#include "core/ports/SettingsWindowHost.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet::sim {

// The settings window on the simulated screen, with what a user can do to it. While an alert is
// open it takes every click and key: the page behind it cannot be used.
class SimSettingsWindow : public SettingsWindow {
public:
    // The title bar's height: the frame is the content plus this (macOS 26's standard title
    // bar; it differs between releases, which is why the core asks for the frame).
    static constexpr double kTitleBarHeight = 28;

    SimSettingsWindow(SettingsWindowStyle style, std::function<void()> willClose)
        : style_(std::move(style)), willClose_(std::move(willClose)) {}

    void setContent(const SettingsWindowContent& content) override;
    Size frameSize() const override;
    void setFrameOrigin(Point origin) override { origin_ = origin; }
    void makeKeyAndOrderFront() override { visible_ = true; }
    void orderFrontRegardless() override { visible_ = true; }

    // The user's side. Each returns false when there is no such thing to use on screen.
    // Clicks the close button.
    bool close();
    // Clicks the sidebar entry with this title.
    bool selectPane(const std::string& title);
    // Flips the switch of the row with this title.
    bool flip(const std::string& rowTitle);
    // Clicks the stepper's up (+1) or down (-1) arrow.
    bool step(const std::string& rowTitle, int direction);
    // Chooses an entry of the row's pop-up menu or segmented picker.
    bool pick(const std::string& rowTitle, const std::string& choiceTitle);
    // Presses a button: the alert's, else a banner's or a row's (the first with this title, or
    // the one in the row with `rowTitle`).
    bool press(const std::string& title, const std::string& rowTitle = "");
    // Replaces the text of the alert's field.
    bool type(const std::string& text);
    // Empties the page's search field and types `text` into it.
    bool search(const std::string& text);
    // Clicks the search field's clear button (shown only while there is a search).
    bool clearSearch();

    bool isVisible() const { return visible_; }
    Point origin() const { return origin_; }
    const SettingsWindowStyle& style() const { return style_; }
    const SettingsWindowContent& content() const { return content_; }
    int renderCount() const { return renders_; }
    // The window as a user reads it (SettingsText).
    std::vector<std::string> render() const;
    // The first line of the row with this title, if the page has one.
    std::optional<std::string> rowLine(const std::string& rowTitle) const;

private:
    // The row with this title, as shown now; null when hidden behind an alert or absent.
    std::optional<SettingsRow> findRow(const std::string& title) const;
    bool usable() const { return visible_ && !content_.alert; }
    const SettingsSearchBar* searchBar() const;
    // The first menu bar item's row with this title, as shown now.
    const SettingsItemRow* findItemRow(const std::string& title) const;
    // Every row and divider of the page's cards, as shown now; none behind an alert.
    std::vector<const SettingsCardItem*> cardEntries() const;

    SettingsWindowStyle style_;
    std::function<void()> willClose_;
    SettingsWindowContent content_;
    Point origin_;
    bool visible_ = false;
    int renders_ = 0;
};

// Makes settings windows; keeps every one made, so a second window would show.
class SimulatedSettingsWindows : public SettingsWindowHost {
public:
    std::shared_ptr<SettingsWindow> createWindow(const SettingsWindowStyle& style,
                                                 std::function<void()> willClose) override;

    std::size_t createdCount() const { return windows_.size(); }
    // The last window made, if any.
    SimSettingsWindow* window() const { return windows_.empty() ? nullptr : windows_.back().get(); }

private:
    std::vector<std::shared_ptr<SimSettingsWindow>> windows_;
};

} // namespace quillet::sim
