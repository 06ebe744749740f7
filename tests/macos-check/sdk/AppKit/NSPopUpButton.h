// Wraps GNUstep's <AppKit/NSPopUpButton.h> for the Linux syntax check of src/macos only.
//
// As with NSMenu (see NSMenu.h here), GNUstep's pop-up button returns its items as
// `id<NSMenuItem>` and an untyped array where Apple returns NSMenuItem *; GNUstep's declarations
// of those members are read under other names and Apple's (NSPopUpButton.h of the macOS 14.2
// SDK) are declared instead. The headers GNUstep's NSPopUpButton.h includes are read first.
#pragma once

#import <AppKit/AppKitDefines.h>
#import <AppKit/NSButton.h>
#import <AppKit/NSMenuItem.h>
#import <Foundation/NSGeometry.h>

#define selectedItem GNUstep_selectedItem
#define itemArray GNUstep_itemArray
#define itemAtIndex GNUstep_itemAtIndex
#define itemWithTitle GNUstep_itemWithTitle
#define lastItem GNUstep_lastItem
#include_next <AppKit/NSPopUpButton.h>
#undef selectedItem
#undef itemArray
#undef itemAtIndex
#undef itemWithTitle
#undef lastItem

NS_ASSUME_NONNULL_BEGIN

@interface NSPopUpButton (AppleItemTypes)
@property (nullable, readonly, strong) NSMenuItem* selectedItem;
@property (readonly, copy) NSArray<NSMenuItem*>* itemArray;
- (nullable NSMenuItem*)itemAtIndex:(NSInteger)index;
- (nullable NSMenuItem*)itemWithTitle:(NSString*)title;
@property (nullable, readonly, strong) NSMenuItem* lastItem;
@end

NS_ASSUME_NONNULL_END
