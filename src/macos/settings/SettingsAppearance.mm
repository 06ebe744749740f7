#include "macos/settings/SettingsAppearance.h"

#include "macos/settings/SettingsAction.h"
#include "macos/support/Strings.h"

namespace quillet::macos::SettingsAppearance {

NSColor* color(Tint tint) {
    switch (tint) {
    case Tint::gray:
        return [NSColor systemGrayColor];
    case Tint::indigo:
        return [NSColor systemIndigoColor];
    case Tint::orange:
        return [NSColor systemOrangeColor];
    case Tint::green:
        return [NSColor systemGreenColor];
    case Tint::purple:
        return [NSColor systemPurpleColor];
    case Tint::cyan:
        return [NSColor systemCyanColor];
    case Tint::blue:
        return [NSColor systemBlueColor];
    case Tint::teal:
        return [NSColor systemTealColor];
    case Tint::red:
        return [NSColor systemRedColor];
    case Tint::accent:
        return [NSColor controlAccentColor];
    case Tint::primary:
        return [NSColor labelColor];
    case Tint::secondary:
        return [NSColor secondaryLabelColor];
    case Tint::tertiary:
        break;
    }
    return [NSColor tertiaryLabelColor];
}

namespace {

NSFontTextStyle textStyle(TextStyle style) {
    switch (style) {
    case TextStyle::body:
        return NSFontTextStyleBody;
    case TextStyle::subheadline:
        return NSFontTextStyleSubheadline;
    case TextStyle::caption:
        break;
    }
    return NSFontTextStyleCaption1;
}

NSFontWeight fontWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        return NSFontWeightRegular;
    case FontWeight::medium:
        return NSFontWeightMedium;
    case FontWeight::semibold:
        return NSFontWeightSemibold;
    case FontWeight::bold:
        break;
    }
    return NSFontWeightBold;
}

} // namespace

NSFont* font(TextStyle style, FontWeight weight) {
    // The text style's size, in the system font at the kit's weight.
    const CGFloat size = [NSFont preferredFontForTextStyle:textStyle(style) options:@{}].pointSize;
    return [NSFont systemFontOfSize:size weight:fontWeight(weight)];
}

NSFont* roundedBoldFont(CGFloat size) {
    NSFont* bold = [NSFont systemFontOfSize:size weight:NSFontWeightBold];
    NSFontDescriptor* rounded =
        [bold.fontDescriptor fontDescriptorWithDesign:NSFontDescriptorSystemDesignRounded];
    NSFont* font = rounded != nil ? [NSFont fontWithDescriptor:rounded size:size] : nil;
    return font != nil ? font : bold;
}

NSTextField* label(std::string_view text, NSFont* font, NSColor* color) {
    NSTextField* field = [NSTextField labelWithString:nonNilString(text)];
    field.font = font;
    field.textColor = color;
    return field;
}

NSTextField* wrappingLabel(std::string_view text, NSFont* font, NSColor* color) {
    NSTextField* field = [NSTextField wrappingLabelWithString:nonNilString(text)];
    field.font = font;
    field.textColor = color;
    // Grows downward rather than widening the column.
    [field setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                    forOrientation:NSLayoutConstraintOrientationHorizontal];
    return field;
}

void setText(NSTextField* label, std::string_view text, CGFloat tracking) {
    if (tracking == 0) {
        label.stringValue = nonNilString(text);
        return;
    }
    label.attributedStringValue =
        [[NSAttributedString alloc] initWithString:nonNilString(text)
                                        attributes:@{
                                            NSFontAttributeName : label.font,
                                            NSForegroundColorAttributeName : label.textColor,
                                            NSKernAttributeName : @(tracking)
                                        }];
}

NSImage* symbol(std::string_view name, CGFloat pointSize, NSFontWeight weight, NSColor* color) {
    NSImage* image = [NSImage imageWithSystemSymbolName:nonNilString(name)
                               accessibilityDescription:nil];
    NSImageSymbolConfiguration* look =
        [NSImageSymbolConfiguration configurationWithHierarchicalColor:color];
    if (pointSize > 0) {
        look = [[NSImageSymbolConfiguration configurationWithPointSize:pointSize weight:weight]
            configurationByApplyingConfiguration:look];
    }
    return image != nil ? [image imageWithSymbolConfiguration:look] : nil;
}

namespace {

void pin(NSView* view, NSView* container) {
    [NSLayoutConstraint activateConstraints:@[
        [view.leadingAnchor constraintEqualToAnchor:container.leadingAnchor],
        [view.trailingAnchor constraintEqualToAnchor:container.trailingAnchor],
        [view.topAnchor constraintEqualToAnchor:container.topAnchor],
        [view.bottomAnchor constraintEqualToAnchor:container.bottomAnchor],
    ]];
}

} // namespace

Rounded roundedBox(NSView* content, NSEdgeInsets insets, CGFloat cornerRadius, NSColor* fill,
                   NSColor* stroke) {
    NSBox* box = [[NSBox alloc] initWithFrame:NSZeroRect];
    box.boxType = NSBoxCustom;
    box.titlePosition = NSNoTitle;
    box.cornerRadius = cornerRadius;
    box.fillColor = fill;
    box.borderWidth = stroke != nil ? 1 : 0;
    box.borderColor = stroke != nil ? stroke : [NSColor clearColor];
    box.translatesAutoresizingMaskIntoConstraints = NO;
    // The box is only drawn behind the content, so that the content's constraints size both.
    NSView* container = [[NSView alloc] initWithFrame:NSZeroRect];
    container.translatesAutoresizingMaskIntoConstraints = NO;
    NSView* inner = padded(content, insets);
    [container addSubview:box];
    [container addSubview:inner];
    pin(box, container);
    pin(inner, container);
    return {container, box};
}

NSStackView* stack(NSUserInterfaceLayoutOrientation orientation, NSLayoutAttribute alignment,
                   CGFloat spacing) {
    NSStackView* stack = [NSStackView stackViewWithViews:@[]];
    stack.orientation = orientation;
    stack.alignment = alignment;
    stack.spacing = spacing;
    stack.translatesAutoresizingMaskIntoConstraints = NO;
    return stack;
}

NSView* padded(NSView* view, NSEdgeInsets insets) {
    NSStackView* wrapper =
        stack(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading, 0);
    wrapper.edgeInsets = insets;
    [wrapper addArrangedSubview:view];
    fillWidth(wrapper, view);
    return wrapper;
}

void fillWidth(NSStackView* stack, NSView* view) {
    const NSEdgeInsets insets = stack.edgeInsets;
    [NSLayoutConstraint activateConstraints:@[
        [view.leadingAnchor constraintEqualToAnchor:stack.leadingAnchor constant:insets.left],
        [view.trailingAnchor constraintEqualToAnchor:stack.trailingAnchor constant:-insets.right],
    ]];
}

NSButton* button(const SettingsButton& shown, id target) {
    NSImage* image = shown.symbol.empty()
                         ? nil
                         : symbol(shown.symbol, 0, NSFontWeightRegular, color(Tint::secondary));
    return image != nil ? [NSButton buttonWithImage:image target:target action:@selector(perform:)]
                        : [NSButton buttonWithTitle:nonNilString(shown.title)
                                             target:target
                                             action:@selector(perform:)];
}

} // namespace quillet::macos::SettingsAppearance
