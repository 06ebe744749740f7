#pragma once

#include "core/settings/SettingsComponents.hpp"

#import "macos/settings/SettingsAction.h"

#import <AppKit/AppKit.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillet::macos {

// Lays any settings page out in AppKit: a scroll view holding a column of banners and cards of
// rows, under a search bar on pages that have one. Drawing a page of the same shape again only
// updates texts, colours and control values in place, so that the focus, a half-typed text and
// the scroll position stay; a page of another shape is laid out anew below its heading and search
// bar, which stay as they are while the page is the same one (a search changes the list under
// the field being typed in). Controls call the actions of the page drawn last. Main thread only.
class SettingsPageRenderer {
public:
    SettingsPageRenderer();
    SettingsPageRenderer(const SettingsPageRenderer&) = delete;
    SettingsPageRenderer& operator=(const SettingsPageRenderer&) = delete;

    NSView* view() const { return scroll_; }
    void render(const SettingsPage& page);

private:
    // Where a piece of the page is: page item, entry of a card, control of a row.
    struct Path {
        std::size_t item = 0;
        std::size_t entry = 0;
        std::size_t control = 0;
    };
    using Refresh = std::function<void(const SettingsPage&)>;

    // What a new layout of the same page keeps: the heading and the search bar, with their
    // refreshers and actions (the first so many of each).
    struct Kept {
        std::string title;
        std::size_t refreshers = 0;
        NSUInteger actions = 0;
    };

    void layOut();
    // Lays the page out anew below its kept heading and search bar.
    void layOutBelowSearchBar();
    void appendItem(std::size_t item);
    // Drops the given views and targets once the action running now has returned.
    static void retire(NSArray* objects);
    NSView* header();
    NSView* banner(std::size_t item);
    NSView* card(std::size_t item);
    NSView* row(Path path);
    NSView* iconWell(Path path);
    static NSView* divider();

    // SettingsPageRenderer+Items.mm
    NSView* searchBar(std::size_t item);
    void showSearchButtons(NSStackView* buttons, std::size_t item, NSMutableArray* targets);
    NSView* caption(std::size_t item);
    NSView* itemPicture(Path path);

    // SettingsPageRenderer+Controls.mm
    NSView* control(Path path);
    NSView* label(Path path);
    NSView* toggle(Path path);
    NSView* stepper(Path path);
    NSView* popUp(Path path);
    NSView* segmentedPicker(Path path);
    NSView* button(Path path);
    NSView* textField(Path path);
    NSView* badge(Path path);

    // A target for a control, kept as long as the layout.
    QuilletSettingsAction* action(std::function<void(id sender)> handler);
    // Runs now and after every later render of a page of the same shape.
    void onRender(Refresh refresh);

    static SettingsRow rowAt(const SettingsPage& page, Path path);
    static SettingsControl controlAt(const SettingsPage& page, Path path);

    SettingsPage page_;
    std::string shape_;
    // The title of the page last laid out.
    std::string laidOutTitle_;
    std::optional<Kept> kept_;
    NSStackView* column_;
    std::vector<Refresh> refreshers_;
    NSMutableArray* actions_;
    NSScrollView* scroll_;
};

} // namespace quillet::macos
