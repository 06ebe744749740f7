#pragma once

#include "core/settings/SettingsComponents.hpp"

#import <AppKit/AppKit.h>

#include <string_view>

namespace quillet::macos::SettingsAppearance {

// How the settings kit's values become AppKit colours, fonts, symbols and shapes.

NSColor* color(Tint tint);
NSFont* font(TextStyle style, FontWeight weight);
// The page title: the system font at `size`, bold, in its rounded design.
NSFont* roundedBoldFont(CGFloat size);

// A one-line label, or one that wraps onto as many lines as it needs.
NSTextField* label(std::string_view text, NSFont* font, NSColor* color);
NSTextField* wrappingLabel(std::string_view text, NSFont* font, NSColor* color);
// Sets a label's text with letter tracking (0: none).
void setText(NSTextField* label, std::string_view text, CGFloat tracking = 0);

// An SF Symbol at `pointSize` and `weight` (0: the size of the text around it), drawn
// hierarchically in `color`; nil for a name the system does not know.
NSImage* symbol(std::string_view name, CGFloat pointSize, NSFontWeight weight, NSColor* color);

// A button showing the kit button's symbol, or else its title, that sends perform: to `target`.
NSButton* button(const SettingsButton& shown, id target);

// `content` inset by `insets` on a rounded rectangle filled with `fill` and outlined inside its
// edge with `stroke` (nil: no outline). `shape` is the rectangle, for changing its look later.
struct Rounded {
    NSView* view;
    NSBox* shape;
};
Rounded roundedBox(NSView* content, NSEdgeInsets insets, CGFloat cornerRadius, NSColor* fill,
                   NSColor* stroke);

// `view` inside a transparent stack with these insets.
NSView* padded(NSView* view, NSEdgeInsets insets);
NSStackView* stack(NSUserInterfaceLayoutOrientation orientation, NSLayoutAttribute alignment,
                   CGFloat spacing);
// Keeps an arranged subview of a vertical stack as wide as the stack's content.
void fillWidth(NSStackView* stack, NSView* view);

} // namespace quillet::macos::SettingsAppearance
