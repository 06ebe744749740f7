// Replaces GNUstep's <AppKit/NSStatusItem.h> for the Linux syntax check of src/macos only.
//
// GNUstep declares the status item of macOS 10.9: image, action, target and tool tip on the item
// itself, no button, no autosave name. Those item-level members still exist on a Mac but are
// deprecated since macOS 10.14, before Quillet's deployment target, so every use warns there (an
// error under -Werror). This is Apple's declaration from NSStatusItem.h of the macOS 14.2 SDK;
// since a macOS deprecation attribute is ignored on Linux, each deprecated member also carries a
// plain deprecation attribute with Apple's message, so that a use fails here as it does on a Mac.
#ifndef _GNUstep_H_NSStatusItem
#define _GNUstep_H_NSStatusItem

#import <AppKit/NSEvent.h>
#import <Foundation/Foundation.h>
#include <os/availability.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSStatusItemAutosaveName;

@class NSAttributedString;
@class NSStatusBarButton;
@class NSStatusBar;
@class NSWindow;
@class NSImage;
@class NSMenu;
@class NSView;

typedef NS_OPTIONS(NSUInteger, NSStatusItemBehavior) {
    NSStatusItemBehaviorRemovalAllowed = (1 << 1),
    NSStatusItemBehaviorTerminationOnRemoval = (1 << 2),
} API_AVAILABLE(macos(10.12));

@interface NSStatusItem : NSObject
@property (readonly, weak) NSStatusBar* statusBar;
@property CGFloat length;
@property (nullable, strong) NSMenu* menu;
@property (nullable, readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@property (assign) NSStatusItemBehavior behavior API_AVAILABLE(macos(10.12));
@property (assign, getter=isVisible) BOOL visible API_AVAILABLE(macos(10.12));
@property (null_resettable, copy) NSStatusItemAutosaveName autosaveName API_AVAILABLE(macos(10.12));
@end

#define QUILLET_STATUS_ITEM_DEPRECATED(message)                                                    \
    API_DEPRECATED(message, macos(10.0, 10.14)) __attribute__((deprecated(message)))

@interface NSStatusItem (NSStatusItemDeprecated)
@property (nullable)
    SEL action QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.action instead");
@property (nullable) SEL doubleAction QUILLET_STATUS_ITEM_DEPRECATED(
    "Use the receiver's button.doubleAction instead");
@property (nullable, weak)
    id target QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.target instead");
@property (nullable, copy)
    NSString* title QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.title instead");
@property (nullable, copy) NSAttributedString* attributedTitle QUILLET_STATUS_ITEM_DEPRECATED(
    "Use the receiver's button.attributedTitle instead");
@property (nullable, strong)
    NSImage* image QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.image instead");
@property (nullable, strong) NSImage* alternateImage QUILLET_STATUS_ITEM_DEPRECATED(
    "Use the receiver's button.alternateImage instead");
@property (getter=isEnabled)
    BOOL enabled QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.enabled instead");
@property BOOL highlightMode QUILLET_STATUS_ITEM_DEPRECATED(
    "Use the receiver's button.cell.highlightsBy instead");
@property (nullable, copy)
    NSString* toolTip QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button.toolTip instead");
- (NSInteger)sendActionOn:(NSEventMask)mask
    QUILLET_STATUS_ITEM_DEPRECATED("Use the receiver's button's -sendActionOn: instead");
@property (nullable, strong)
    NSView* view QUILLET_STATUS_ITEM_DEPRECATED("Use the standard button property instead");
- (void)drawStatusBarBackgroundInRect:(NSRect)rect
                        withHighlight:(BOOL)highlight
    QUILLET_STATUS_ITEM_DEPRECATED("Use the standard button instead which handles highlight "
                                   "drawing, making this method obsolete");
- (void)popUpStatusItemMenu:(NSMenu*)menu
    QUILLET_STATUS_ITEM_DEPRECATED("Use the menu property instead");
@end

#undef QUILLET_STATUS_ITEM_DEPRECATED

NS_ASSUME_NONNULL_END

#endif // _GNUstep_H_NSStatusItem
