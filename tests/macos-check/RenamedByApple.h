// Old AppKit names that GNUstep still declares plainly but Apple deprecated in macOS 10.12, for the
// Linux syntax check of src/macos only.
//
// On a Mac, with Quillet's deployment target of macOS 13, every use of one of these warns, and the
// warning is an error under -Werror (NSEvent.h and NSWindow.h of the macOS 14.2 SDK:
// `API_DEPRECATED_WITH_REPLACEMENT("NSEventTypeLeftMouseDown", macos(10.0,10.12))` and so on).
// Here each old name becomes a deprecated constant with the value of its replacement, so that a
// use fails here too and the message names the replacement. Included after every GNUstep header,
// so it reaches only the checked files.
#pragma once
#pragma clang system_header

#import <AppKit/AppKit.h>

#include "GNUstepGaps.h"

#define QUILLET_RENAMED_IN_10_12(type, oldName, newName)                                           \
    [[deprecated("first deprecated in macOS 10.12: use " #newName)]] inline constexpr type         \
        AppleDeprecated_##oldName = newName;

// NSEvent.h: event types
QUILLET_RENAMED_IN_10_12(NSEventType, NSLeftMouseDown, NSEventTypeLeftMouseDown)
QUILLET_RENAMED_IN_10_12(NSEventType, NSLeftMouseUp, NSEventTypeLeftMouseUp)
QUILLET_RENAMED_IN_10_12(NSEventType, NSRightMouseDown, NSEventTypeRightMouseDown)
QUILLET_RENAMED_IN_10_12(NSEventType, NSRightMouseUp, NSEventTypeRightMouseUp)
QUILLET_RENAMED_IN_10_12(NSEventType, NSMouseMoved, NSEventTypeMouseMoved)
QUILLET_RENAMED_IN_10_12(NSEventType, NSLeftMouseDragged, NSEventTypeLeftMouseDragged)
QUILLET_RENAMED_IN_10_12(NSEventType, NSKeyDown, NSEventTypeKeyDown)
QUILLET_RENAMED_IN_10_12(NSEventType, NSKeyUp, NSEventTypeKeyUp)
QUILLET_RENAMED_IN_10_12(NSEventType, NSFlagsChanged, NSEventTypeFlagsChanged)
#define NSLeftMouseDown AppleDeprecated_NSLeftMouseDown
#define NSLeftMouseUp AppleDeprecated_NSLeftMouseUp
#define NSRightMouseDown AppleDeprecated_NSRightMouseDown
#define NSRightMouseUp AppleDeprecated_NSRightMouseUp
#define NSMouseMoved AppleDeprecated_NSMouseMoved
#define NSLeftMouseDragged AppleDeprecated_NSLeftMouseDragged
#define NSKeyDown AppleDeprecated_NSKeyDown
#define NSKeyUp AppleDeprecated_NSKeyUp
#define NSFlagsChanged AppleDeprecated_NSFlagsChanged

// NSEvent.h: event masks
QUILLET_RENAMED_IN_10_12(NSEventMask, NSLeftMouseDownMask, NSEventMaskLeftMouseDown)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSLeftMouseUpMask, NSEventMaskLeftMouseUp)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSRightMouseDownMask, NSEventMaskRightMouseDown)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSRightMouseUpMask, NSEventMaskRightMouseUp)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSMouseMovedMask, NSEventMaskMouseMoved)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSLeftMouseDraggedMask, NSEventMaskLeftMouseDragged)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSKeyDownMask, NSEventMaskKeyDown)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSKeyUpMask, NSEventMaskKeyUp)
QUILLET_RENAMED_IN_10_12(NSEventMask, NSFlagsChangedMask, NSEventMaskFlagsChanged)
#define NSLeftMouseDownMask AppleDeprecated_NSLeftMouseDownMask
#define NSLeftMouseUpMask AppleDeprecated_NSLeftMouseUpMask
#define NSRightMouseDownMask AppleDeprecated_NSRightMouseDownMask
#define NSRightMouseUpMask AppleDeprecated_NSRightMouseUpMask
#define NSMouseMovedMask AppleDeprecated_NSMouseMovedMask
#define NSLeftMouseDraggedMask AppleDeprecated_NSLeftMouseDraggedMask
#define NSKeyDownMask AppleDeprecated_NSKeyDownMask
#define NSKeyUpMask AppleDeprecated_NSKeyUpMask
#define NSFlagsChangedMask AppleDeprecated_NSFlagsChangedMask

// NSEvent.h: modifier flags
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSAlphaShiftKeyMask, NSEventModifierFlagCapsLock)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSShiftKeyMask, NSEventModifierFlagShift)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSControlKeyMask, NSEventModifierFlagControl)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSAlternateKeyMask, NSEventModifierFlagOption)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSCommandKeyMask, NSEventModifierFlagCommand)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSFunctionKeyMask, NSEventModifierFlagFunction)
QUILLET_RENAMED_IN_10_12(NSEventModifierFlags, NSDeviceIndependentModifierFlagsMask,
                         NSEventModifierFlagDeviceIndependentFlagsMask)
#define NSAlphaShiftKeyMask AppleDeprecated_NSAlphaShiftKeyMask
#define NSShiftKeyMask AppleDeprecated_NSShiftKeyMask
#define NSControlKeyMask AppleDeprecated_NSControlKeyMask
#define NSAlternateKeyMask AppleDeprecated_NSAlternateKeyMask
#define NSCommandKeyMask AppleDeprecated_NSCommandKeyMask
#define NSFunctionKeyMask AppleDeprecated_NSFunctionKeyMask
#define NSDeviceIndependentModifierFlagsMask AppleDeprecated_NSDeviceIndependentModifierFlagsMask

// NSWindow.h: style masks
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSBorderlessWindowMask, NSWindowStyleMaskBorderless)
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSTitledWindowMask, NSWindowStyleMaskTitled)
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSClosableWindowMask, NSWindowStyleMaskClosable)
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSMiniaturizableWindowMask,
                         NSWindowStyleMaskMiniaturizable)
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSResizableWindowMask, NSWindowStyleMaskResizable)
QUILLET_RENAMED_IN_10_12(NSWindowStyleMask, NSNonactivatingPanelMask,
                         NSWindowStyleMaskNonactivatingPanel)
#define NSBorderlessWindowMask AppleDeprecated_NSBorderlessWindowMask
#define NSTitledWindowMask AppleDeprecated_NSTitledWindowMask
#define NSClosableWindowMask AppleDeprecated_NSClosableWindowMask
#define NSMiniaturizableWindowMask AppleDeprecated_NSMiniaturizableWindowMask
#define NSResizableWindowMask AppleDeprecated_NSResizableWindowMask
#define NSNonactivatingPanelMask AppleDeprecated_NSNonactivatingPanelMask

#undef QUILLET_RENAMED_IN_10_12
