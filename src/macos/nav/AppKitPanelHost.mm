#include "macos/nav/AppKitPanelHost.h"

#include "macos/support/Strings.h"

#import <AppKit/AppKit.h>

// A borderless panel cannot become key by default; the core makes it key so that it gets the keys.
@interface QuilletKeyPanel : NSPanel
@end

@implementation QuilletKeyPanel
- (BOOL)canBecomeKeyWindow {
    return YES;
}
@end

namespace quillet::macos {

namespace {

// A stretchable mask that rounds the corners of a visual effect view.
NSImage* roundedMask(CGFloat radius) {
    const CGFloat edge = radius * 2 + 1;
    NSImage* mask = [NSImage imageWithSize:NSMakeSize(edge, edge)
                                   flipped:NO
                            drawingHandler:^BOOL(NSRect rect) {
                                [[NSColor blackColor] setFill];
                                [[NSBezierPath bezierPathWithRoundedRect:rect
                                                                 xRadius:radius
                                                                 yRadius:radius] fill];
                                return YES;
                            }];
    mask.capInsets = NSEdgeInsetsMake(radius, radius, radius, radius);
    mask.resizingMode = NSImageResizingModeStretch;
    return mask;
}

NSTextField* label(const PanelText& line) {
    // Text that is not valid UTF-8 shows as an empty line.
    NSString* text = nsString(line.text);
    NSTextField* field = [NSTextField labelWithString:text != nil ? text : @""];
    field.font = [NSFont
        preferredFontForTextStyle:line.font == PanelText::Font::headline ? NSFontTextStyleHeadline
                                                                         : NSFontTextStyleCaption2
                          options:@{}];
    if (line.secondary) {
        field.textColor = [NSColor secondaryLabelColor];
    }
    field.maximumNumberOfLines = line.lineLimit;
    if (line.lineLimit == 1) {
        field.lineBreakMode = NSLineBreakByTruncatingTail;
    }
    return field;
}

// The content: the translucent background with the lines stacked in its middle.
NSView* render(const PanelContent& content, NSSize size) {
    NSVisualEffectView* background =
        [[NSVisualEffectView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    background.material = NSVisualEffectMaterialHUDWindow;
    background.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    background.state = NSVisualEffectStateActive;
    background.maskImage = roundedMask(content.cornerRadius);

    NSStackView* stack = [NSStackView stackViewWithViews:@[]];
    stack.translatesAutoresizingMaskIntoConstraints = NO;
    stack.orientation = NSUserInterfaceLayoutOrientationVertical;
    stack.alignment = NSLayoutAttributeCenterX;
    stack.spacing = content.spacing;
    const CGFloat inset = content.padding;
    stack.edgeInsets = NSEdgeInsetsMake(inset, inset, inset, inset);
    for (const PanelText& line : content.lines) {
        [stack addArrangedSubview:label(line)];
    }
    [background addSubview:stack];
    [NSLayoutConstraint activateConstraints:@[
        [stack.leadingAnchor constraintEqualToAnchor:background.leadingAnchor],
        [stack.trailingAnchor constraintEqualToAnchor:background.trailingAnchor],
        [stack.centerYAnchor constraintEqualToAnchor:background.centerYAnchor],
    ]];
    return background;
}

class AppKitPanel final : public FloatingPanel {
public:
    explicit AppKitPanel(const PanelStyle& style)
        : size_(NSMakeSize(style.contentRect.width(), style.contentRect.height())) {
        const Rect& rect = style.contentRect;
        panel_ = [[QuilletKeyPanel alloc]
            initWithContentRect:NSMakeRect(rect.minX(), rect.minY(), rect.width(), rect.height())
                      styleMask:static_cast<NSWindowStyleMask>(style.styleMask)
                        backing:static_cast<NSBackingStoreType>(style.backing)
                          defer:style.deferred ? YES : NO];
        panel_.releasedWhenClosed = NO;
        panel_.level = static_cast<NSInteger>(style.level);
        panel_.floatingPanel = style.floatingPanel ? YES : NO;
        panel_.hidesOnDeactivate = style.hidesOnDeactivate ? YES : NO;
        panel_.opaque = style.opaque ? YES : NO;
        if (style.clearBackground) {
            panel_.backgroundColor = [NSColor clearColor];
        }
        panel_.hasShadow = style.hasShadow ? YES : NO;
    }

    void setContent(const PanelContent& content) override {
        panel_.contentView = render(content, size_);
    }
    void setFrameOrigin(Point origin) override {
        [panel_ setFrameOrigin:NSMakePoint(origin.x, origin.y)];
    }
    void makeKeyAndOrderFront() override { [panel_ makeKeyAndOrderFront:nil]; }
    void orderOut() override { [panel_ orderOut:nil]; }

private:
    NSSize size_;
    NSPanel* panel_;
};

} // namespace

std::shared_ptr<FloatingPanel> AppKitPanelHost::createPanel(const PanelStyle& style) {
    return std::make_shared<AppKitPanel>(style);
}

} // namespace quillet::macos
