#pragma once

#include "core/settings/SettingsComponents.hpp"

#import "macos/settings/SettingsAction.h"

#import <AppKit/AppKit.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillet::macos {

// Lays any settings page out in AppKit: a scroll view holding a column of banners and cards of
// rows. Drawing a page of the same shape again only updates texts, colours and control values in
// place, so that the focus, a half-typed text and the scroll position stay; a page of another
// shape is laid out anew. Controls call the actions of the page drawn last. Main thread only.
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

    void layOut();
    NSView* header();
    NSView* banner(std::size_t item);
    NSView* card(std::size_t item);
    NSView* row(Path path);
    NSView* iconWell(Path path);
    static NSView* divider();

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
    std::vector<Refresh> refreshers_;
    NSMutableArray* actions_;
    NSScrollView* scroll_;
};

} // namespace quillet::macos
