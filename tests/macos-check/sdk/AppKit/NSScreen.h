// Replaces GNUstep's <AppKit/NSScreen.h> for the Linux syntax check of src/macos only.
//
// GNUstep returns the screens as an untyped NSArray, so `NSScreen.screens[0].frame`, correct on
// a Mac, fails here (a property of `id`); it also lacks the notch areas and safe-area insets.
// This is Apple's declaration from NSScreen.h of the macOS 14.2 SDK, for the members the macOS
// layer may use.
#ifndef _GNUstep_H_NSScreen
#define _GNUstep_H_NSScreen

#import <AppKit/NSGraphics.h>
#import <Foundation/Foundation.h>
#include <os/availability.h>

NS_ASSUME_NONNULL_BEGIN

// NSGraphics.h
typedef NSString* NSDeviceDescriptionKey;

@interface NSScreen : NSObject
@property (class, readonly, copy) NSArray<NSScreen*>* screens;
@property (class, readonly, nullable, strong) NSScreen* mainScreen;
@property (class, readonly, nullable, strong) NSScreen* deepestScreen;
@property (readonly) NSWindowDepth depth;
@property (readonly) NSRect frame;
@property (readonly, copy) NSDictionary<NSDeviceDescriptionKey, id>* deviceDescription;
@property (readonly) NSRect visibleFrame;
@property (readonly) CGFloat backingScaleFactor API_AVAILABLE(macos(10.7));
@property (readonly, copy) NSString* localizedName API_AVAILABLE(macos(10.15));
@property (readonly) NSEdgeInsets safeAreaInsets API_AVAILABLE(macos(12.0));
@property (readonly) NSRect auxiliaryTopLeftArea API_AVAILABLE(macos(12.0));
@property (readonly) NSRect auxiliaryTopRightArea API_AVAILABLE(macos(12.0));
@end

NS_ASSUME_NONNULL_END

#endif // _GNUstep_H_NSScreen
