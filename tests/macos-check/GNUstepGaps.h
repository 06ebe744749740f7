// Apple's declarations of the Foundation and AppKit members that GNUstep 0.29 lacks, for the Linux
// syntax check of src/macos only. Each is copied from the macOS 14.2 SDK header named above it (the
// same text as the project's Apple API reference). Members GNUstep has are not redeclared: for a
// typed receiver clang takes the class's own declaration over a category's, so a redeclaration
// could not change anything; where GNUstep's declaration differs from Apple's in a way that
// matters, its header is replaced instead (sdk/AppKit).
#pragma once
#pragma clang system_header

#import <AppKit/AppKit.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#include <os/availability.h>

// objc/objc.h: Apple's YES and NO are clang's Boolean literals, so `@YES` boxes into an NSNumber.
// GCC's runtime header spells them `(BOOL)1` and `(BOOL)0`, with which `@YES` does not parse.
#undef YES
#undef NO
#define YES __objc_yes
#define NO __objc_no

// objc/objc.h: in C++ Apple's nil and Nil are nullptr, so `action:nil` passes a null selector.
// GCC's runtime header spells them `(id)0` and `(Class)0`, which no SEL or C pointer accepts.
#undef nil
#undef Nil
#define nil nullptr
#define Nil nullptr

NS_ASSUME_NONNULL_BEGIN

// NSObjCRuntime.h
#define NS_INLINE static __inline__ __attribute__((always_inline))

// NSObject.h
NS_INLINE CF_RETURNS_RETAINED CFTypeRef _Nullable CFBridgingRetain(id _Nullable X) {
    return (__bridge_retained CFTypeRef)X;
}
NS_INLINE id _Nullable CFBridgingRelease(CFTypeRef CF_CONSUMED _Nullable X) {
    return (__bridge_transfer id)X;
}

// NSProcessInfo.h
typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;
@interface NSProcessInfo (AppleOnlyVersion)
@property (readonly) NSOperatingSystemVersion operatingSystemVersion API_AVAILABLE(
    macos(10.10), ios(8.0), watchos(2.0), tvos(9.0));
@end

// NSApplication.h
@interface NSApplication (AppleOnlyActivation)
- (NSApplicationActivationPolicy)activationPolicy API_AVAILABLE(macos(10.6));
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy
    API_AVAILABLE(macos(10.6));
- (void)activate API_AVAILABLE(macos(14.0));
@end

// NSImage.h. Under __cplusplus Apple declares the `template` property as a method pair, since
// `template` is a C++ keyword.
@class NSImageSymbolConfiguration;
@interface NSImage (AppleOnlyImages)
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description
    API_AVAILABLE(macos(11.0));
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration
    API_AVAILABLE(macos(11.0));
- (instancetype)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size API_AVAILABLE(macos(10.6));
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
@end

// NSImage.h
API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
+ (instancetype)configurationWithHierarchicalColor:(NSColor*)hierarchicalColor
    API_AVAILABLE(macos(12.0));
- (instancetype)configurationByApplyingConfiguration:(NSImageSymbolConfiguration*)configuration
    API_AVAILABLE(macos(12.0));
@end

// NSMenu.h
@interface NSMenu (AppleOnlyMenus)
- (void)removeAllItems API_AVAILABLE(macos(10.6));
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(nullable NSView*)view API_AVAILABLE(macos(10.6));
@end

// NSEvent.h. GNUstep's NSEventType is an integer typedef with its own values where Apple's is an
// NS_ENUM; the names Apple introduced in 10.12 are declared here as constants of that type with
// Apple's values. The masks and modifier flags are NS_OPTIONS, integer constants in C++ on both.
static const NSEventType NSEventTypeLeftMouseDown = 1;
static const NSEventType NSEventTypeLeftMouseUp = 2;
static const NSEventType NSEventTypeRightMouseDown = 3;
static const NSEventType NSEventTypeRightMouseUp = 4;
static const NSEventType NSEventTypeMouseMoved = 5;
static const NSEventType NSEventTypeLeftMouseDragged = 6;
static const NSEventType NSEventTypeRightMouseDragged = 7;
static const NSEventType NSEventTypeKeyDown = 10;
static const NSEventType NSEventTypeKeyUp = 11;
static const NSEventType NSEventTypeFlagsChanged = 12;
static const NSEventType NSEventTypeScrollWheel = 22;
static const NSEventType NSEventTypeOtherMouseDown = 25;
static const NSEventType NSEventTypeOtherMouseUp = 26;
enum : NSEventMask {
    NSEventMaskLeftMouseDown = 1ULL << NSEventTypeLeftMouseDown,
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseDown = 1ULL << NSEventTypeRightMouseDown,
    NSEventMaskRightMouseUp = 1ULL << NSEventTypeRightMouseUp,
    NSEventMaskMouseMoved = 1ULL << NSEventTypeMouseMoved,
    NSEventMaskLeftMouseDragged = 1ULL << NSEventTypeLeftMouseDragged,
    NSEventMaskRightMouseDragged = 1ULL << NSEventTypeRightMouseDragged,
    NSEventMaskKeyDown = 1ULL << NSEventTypeKeyDown,
    NSEventMaskKeyUp = 1ULL << NSEventTypeKeyUp,
    NSEventMaskFlagsChanged = 1ULL << NSEventTypeFlagsChanged,
    NSEventMaskScrollWheel = 1ULL << NSEventTypeScrollWheel,
    NSEventMaskOtherMouseDown = 1ULL << NSEventTypeOtherMouseDown,
    NSEventMaskOtherMouseUp = 1ULL << NSEventTypeOtherMouseUp,
};
enum : NSEventModifierFlags {
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
    NSEventModifierFlagNumericPad = 1 << 21,
    NSEventModifierFlagHelp = 1 << 22,
    NSEventModifierFlagFunction = 1 << 23,
    NSEventModifierFlagDeviceIndependentFlagsMask = 0xffff0000UL,
};
@interface NSEvent (AppleOnlyMonitors)
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask
                                             handler:(void (^)(NSEvent* event))block
    API_AVAILABLE(macos(10.6));
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block
    API_AVAILABLE(macos(10.6));
+ (void)removeMonitor:(id)eventMonitor API_AVAILABLE(macos(10.6));
@end

// NSWorkspace.h
APPKIT_EXTERN NSNotificationName const
    NSWorkspaceDidActivateApplicationNotification API_AVAILABLE(macos(10.6));
APPKIT_EXTERN NSNotificationName const
    NSWorkspaceDidDeactivateApplicationNotification API_AVAILABLE(macos(10.6));
APPKIT_EXTERN NSString* const NSWorkspaceApplicationKey API_AVAILABLE(macos(10.6));
@interface NSWorkspace (AppleOnlyApplications)
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier
    API_AVAILABLE(macos(10.6));
@end

// NSWindow.h. GNUstep has the style mask's getter only.
@interface NSWindow (AppleOnlyWindows)
- (void)setStyleMask:(NSWindowStyleMask)styleMask;
@property BOOL titlebarAppearsTransparent API_AVAILABLE(macos(10.10));
@end

// NSColor.h
@interface NSColor (AppleOnlyColors)
@property (class, strong, readonly) NSColor* controlAccentColor API_AVAILABLE(macos(10.14));
@property (class, strong, readonly) NSColor* systemCyanColor API_AVAILABLE(macos(12.0));
@end

// NSStackView.h
API_AVAILABLE(macos(10.9))
@interface NSStackView : NSView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSEdgeInsets edgeInsets;
@property CGFloat spacing;
@property (readonly, copy) NSArray<__kindof NSView*>* arrangedSubviews API_AVAILABLE(macos(10.11));
- (void)addArrangedSubview:(NSView*)view API_AVAILABLE(macos(10.11));
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index API_AVAILABLE(macos(10.11));
- (void)removeArrangedSubview:(NSView*)view API_AVAILABLE(macos(10.11));
- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view;
@end

// NSTextField.h
@interface NSTextField (AppleOnlyLabels)
+ (instancetype)labelWithString:(NSString*)stringValue API_AVAILABLE(macos(10.12));
+ (instancetype)wrappingLabelWithString:(NSString*)stringValue API_AVAILABLE(macos(10.12));
@property CGFloat preferredMaxLayoutWidth API_AVAILABLE(macos(10.8));
@property NSInteger maximumNumberOfLines API_AVAILABLE(macos(10.11));
@end

// NSObjCRuntime.h
#define NS_TYPED_ENUM __attribute__((swift_wrapper(enum)))

// NSFontDescriptor.h
typedef NSString* NSFontTextStyle NS_TYPED_ENUM;
APPKIT_EXTERN NSFontTextStyle const NSFontTextStyleHeadline API_AVAILABLE(macos(11.0));
APPKIT_EXTERN NSFontTextStyle const NSFontTextStyleCaption2 API_AVAILABLE(macos(11.0));
APPKIT_EXTERN NSFontTextStyle const NSFontTextStyleBody API_AVAILABLE(macos(11.0));
APPKIT_EXTERN NSFontTextStyle const NSFontTextStyleSubheadline API_AVAILABLE(macos(11.0));
APPKIT_EXTERN NSFontTextStyle const NSFontTextStyleCaption1 API_AVAILABLE(macos(11.0));
typedef NSString* NSFontTextStyleOptionKey NS_TYPED_ENUM;
typedef NSString* NSFontDescriptorSystemDesign NS_TYPED_ENUM;
APPKIT_EXTERN NSFontDescriptorSystemDesign const
    NSFontDescriptorSystemDesignRounded API_AVAILABLE(macos(10.15));
@interface NSFontDescriptor (AppleOnlyDesigns)
- (nullable instancetype)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design
    API_AVAILABLE(macos(10.15));
@end

// NSFont.h
@interface NSFont (AppleOnlyFonts)
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize
                     weight:(NSFontWeight)weight API_AVAILABLE(macos(10.11));
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style
                             options:(NSDictionary<NSFontTextStyleOptionKey, id>*)options
    API_AVAILABLE(macos(11.0));
@end

// NSButton.h, NSControl.h. GNUstep keeps the control size on the cell only.
@interface NSButton (AppleOnlyButtons)
+ (instancetype)buttonWithTitle:(NSString*)title
                         target:(nullable id)target
                         action:(nullable SEL)action API_AVAILABLE(macos(10.12));
+ (instancetype)buttonWithImage:(NSImage*)image
                         target:(nullable id)target
                         action:(nullable SEL)action API_AVAILABLE(macos(10.12));
@property BOOL hasDestructiveAction API_AVAILABLE(macos(11.0));
@end
@interface NSControl (AppleOnlyControlSize)
@property NSControlSize controlSize API_AVAILABLE(macos(10.10));
@end
@interface NSControl (AppleOnlyLineBreaks)
@property NSLineBreakMode lineBreakMode API_AVAILABLE(macos(10.10));
@end

// NSButtonCell.h of the macOS 14 SDK names the bezel styles by role; GNUstep has the older names
// for the same values (NSRoundedBezelStyle is 1, NSTexturedRoundedBezelStyle 11).
static const NSBezelStyle NSBezelStylePush = NSRoundedBezelStyle;
static const NSBezelStyle NSBezelStyleRounded = NSBezelStylePush;
static const NSBezelStyle NSBezelStyleToolbar = NSTexturedRoundedBezelStyle;
static const NSBezelStyle NSBezelStyleBadge = static_cast<NSBezelStyle>(15);

// NSImage.h
typedef NS_ENUM(NSInteger, NSImageResizingMode) {
    NSImageResizingModeTile = 0,
    NSImageResizingModeStretch = 1,
} API_AVAILABLE(macos(10.10));
@interface NSImage (AppleOnlyDrawnImages)
+ (instancetype)imageWithSize:(NSSize)size
                      flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
               drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler API_AVAILABLE(macos(10.8));
@property NSEdgeInsets capInsets API_AVAILABLE(macos(10.10));
@property NSImageResizingMode resizingMode API_AVAILABLE(macos(10.10));
@end

// NSImageView.h
@interface NSImageView (AppleOnlyImageViews)
+ (instancetype)imageViewWithImage:(NSImage*)image API_AVAILABLE(macos(10.12));
@end

// NSAlert.h
@interface NSAlert (AppleOnlyAlerts)
@property (nullable, strong) NSView* accessoryView API_AVAILABLE(macos(10.5));
- (void)beginSheetModalForWindow:(NSWindow*)sheetWindow
               completionHandler:(void (^_Nullable)(NSModalResponse returnCode))handler
    API_AVAILABLE(macos(10.9));
@end

// NSTableView.h
typedef NS_ENUM(NSInteger, NSTableViewStyle) {
    NSTableViewStyleAutomatic,
    NSTableViewStyleFullWidth,
    NSTableViewStyleInset,
    NSTableViewStyleSourceList,
    NSTableViewStylePlain
} API_AVAILABLE(macos(11.0));
@interface NSTableView (AppleOnlyStyles)
@property NSTableViewStyle style API_AVAILABLE(macos(11.0));
@end

// NSTableCellView.h
API_AVAILABLE(macos(10.7))
@interface NSTableCellView : NSView
@property (nullable, strong) id objectValue;
@property (nullable, assign) IBOutlet NSTextField* textField;
@property (nullable, assign) IBOutlet NSImageView* imageView;
@end

// NSTextField.h
@interface NSTextField (AppleOnlyPlaceholders)
@property (nullable, copy) NSString* placeholderString API_AVAILABLE(macos(10.10));
@end

// NSSegmentedControl.h
@interface NSSegmentedControl (AppleOnlySegments)
+ (instancetype)segmentedControlWithLabels:(NSArray<NSString*>*)labels
                              trackingMode:(NSSegmentSwitchTracking)trackingMode
                                    target:(nullable id)target
                                    action:(nullable SEL)action API_AVAILABLE(macos(10.12));
@end

// NSVisualEffectView.h
static const NSVisualEffectMaterial NSVisualEffectMaterialHUDWindow = 13;

// NSView.h, NSLayoutAnchor.h. (The view's `layer` needs QuartzCore, which nothing here declares.)
@interface NSView (AppleOnlyLayout)
@property BOOL wantsLayer API_AVAILABLE(macos(10.5));
@property BOOL translatesAutoresizingMaskIntoConstraints API_AVAILABLE(macos(10.7));
@property (readonly, strong) NSLayoutXAxisAnchor* leadingAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutXAxisAnchor* trailingAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutXAxisAnchor* leftAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutXAxisAnchor* rightAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutYAxisAnchor* topAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutYAxisAnchor* bottomAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutDimension* widthAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutDimension* heightAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutXAxisAnchor* centerXAnchor API_AVAILABLE(macos(10.11));
@property (readonly, strong) NSLayoutYAxisAnchor* centerYAnchor API_AVAILABLE(macos(10.11));
@end

// NSLayoutConstraint.h
@interface NSView (AppleOnlyConstraintBasedLayoutCoreMethods)
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation
    API_AVAILABLE(macos(10.7));
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation
    API_AVAILABLE(macos(10.7));
@property (readonly) NSSize intrinsicContentSize API_AVAILABLE(macos(10.7));
- (void)layoutSubtreeIfNeeded API_AVAILABLE(macos(10.7));
@end
// GNUstep has the priority's getter only.
@interface NSLayoutConstraint (AppleOnlyPriorities)
- (void)setPriority:(NSLayoutPriority)priority;
@end

NS_ASSUME_NONNULL_END
