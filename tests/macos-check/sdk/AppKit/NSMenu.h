// Wraps GNUstep's <AppKit/NSMenu.h> for the Linux syntax check of src/macos only.
//
// GNUstep's NSMenu returns its items as `id<NSMenuItem>` (a protocol GNUstep has and Apple does
// not) and as an untyped array, so `NSMenuItem *item = [menu addItemWithTitle:…]`, correct on a
// Mac, would fail here. GNUstep's declarations of those members are read under other names, and
// Apple's (NSMenu.h of the macOS 14.2 SDK) are declared instead. The headers GNUstep's NSMenu.h
// includes are read first, so that the renames reach nothing else.
#pragma once

#import <AppKit/AppKitDefines.h>
#import <AppKit/NSMenuItem.h>
#import <Foundation/NSGeometry.h>
#import <Foundation/NSObject.h>
#import <GNUstepBase/GSVersionMacros.h>

#define addItemWithTitle GNUstep_addItemWithTitle
#define insertItemWithTitle GNUstep_insertItemWithTitle
#define itemWithTag GNUstep_itemWithTag
#define itemWithTitle GNUstep_itemWithTitle
#define itemArray GNUstep_itemArray
#include_next <AppKit/NSMenu.h>
#undef addItemWithTitle
#undef insertItemWithTitle
#undef itemWithTag
#undef itemWithTitle
#undef itemArray

NS_ASSUME_NONNULL_BEGIN

@interface NSMenu (AppleItemTypes)
- (NSMenuItem*)addItemWithTitle:(NSString*)string
                         action:(nullable SEL)selector
                  keyEquivalent:(NSString*)charCode;
- (NSMenuItem*)insertItemWithTitle:(NSString*)string
                            action:(nullable SEL)selector
                     keyEquivalent:(NSString*)charCode
                           atIndex:(NSInteger)index;
- (nullable NSMenuItem*)itemWithTag:(NSInteger)tag;
- (nullable NSMenuItem*)itemWithTitle:(NSString*)title;
@property (copy) NSArray<NSMenuItem*>* itemArray;
@end

NS_ASSUME_NONNULL_END
