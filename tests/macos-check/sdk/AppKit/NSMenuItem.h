// Wraps GNUstep's <AppKit/NSMenuItem.h> for the Linux syntax check of src/macos only.
//
// GNUstep's +separatorItem returns `id<NSMenuItem>` (a protocol GNUstep has and Apple does not),
// which C++ does not convert to `NSMenuItem *`: `return [NSMenuItem separatorItem];` from a
// function returning NSMenuItem *, correct on a Mac, would fail here. GNUstep's declaration is
// read under another name, and Apple's (NSMenuItem.h of the macOS 14.2 SDK) is declared instead.
// Nothing else GNUstep's header includes names `separatorItem`, so the rename stays in it.
#pragma once

#import <AppKit/NSUserInterfaceValidation.h>
#import <Foundation/NSObject.h>
#import <GNUstepBase/GSVersionMacros.h>

#define separatorItem GNUstep_separatorItem
#include_next <AppKit/NSMenuItem.h>
#undef separatorItem

@interface NSMenuItem (AppleSeparatorItem)
+ (NSMenuItem*)separatorItem;
@end
