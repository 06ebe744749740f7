// Stand-in for <CoreGraphics/CoreGraphics.h>, for the Linux syntax check of src/macos only.
//
// The subset of Apple's CoreGraphics that the macOS layer uses: window list, displays, events,
// cursor, screen capture and geometry. Each group is copied from the macOS 14.2 SDK header named
// above it (the same text as the project's Apple API reference); enumerations list the constants
// Quillet may name, with Apple's values.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

// GNUstep's Foundation declares CGFloat, NSPoint, NSSize, NSRect and (in AppKit) CGImageRef,
// CGColorRef; the rest comes from here.
#import <Foundation/Foundation.h>

#include <stdbool.h>
#include <stdint.h>

// CGBase.h
#define CG_EXTERN extern
#define CG_INLINE static inline
#define cg_nullable __nullable

// CGGeometry.h. On a Mac NSPoint, NSSize and NSRect are typedefs of CGPoint, CGSize and CGRect
// (NSGeometry.h: `typedef CGPoint NSPoint;`), so Mac code passes one where the other is asked
// for. GNUstep declares its own structs, with the same members; naming them here gives the same
// identity of the two spellings that the Mac has.
typedef NSPoint CGPoint;
typedef NSSize CGSize;
typedef NSRect CGRect;

// CGImage.h: GNUstep's NSImageRep.h already declares `typedef struct CGImage *CGImageRef;`, the
// same type; Apple's declaration adds the bridging attribute.
typedef struct CF_BRIDGED_TYPE(id) CGImage* CGImageRef;

extern "C" {

CF_IMPLICIT_BRIDGING_ENABLED
CF_ASSUME_NONNULL_BEGIN

// CGGeometry.h
CG_EXTERN const CGPoint CGPointZero;
CG_EXTERN const CGSize CGSizeZero;
CG_EXTERN const CGRect CGRectZero;
CG_EXTERN const CGRect CGRectNull;
CG_EXTERN const CGRect CGRectInfinite;
CG_INLINE CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint p;
    p.x = x;
    p.y = y;
    return p;
}
CG_INLINE CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size;
    size.width = width;
    size.height = height;
    return size;
}
CG_INLINE CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect;
    rect.origin.x = x;
    rect.origin.y = y;
    rect.size.width = width;
    rect.size.height = height;
    return rect;
}
CG_EXTERN CGFloat CGRectGetMinX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMidX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMaxX(CGRect rect);
CG_EXTERN CGFloat CGRectGetMinY(CGRect rect);
CG_EXTERN CGFloat CGRectGetMidY(CGRect rect);
CG_EXTERN CGFloat CGRectGetMaxY(CGRect rect);
CG_EXTERN CGFloat CGRectGetWidth(CGRect rect);
CG_EXTERN CGFloat CGRectGetHeight(CGRect rect);
CG_EXTERN bool CGRectIsNull(CGRect rect);
CG_EXTERN bool CGRectIsEmpty(CGRect rect);
CG_EXTERN bool CGRectEqualToRect(CGRect rect1, CGRect rect2);
CG_EXTERN bool CGRectContainsPoint(CGRect rect, CGPoint point);
CG_EXTERN bool CGRectIntersectsRect(CGRect rect1, CGRect rect2);
CG_EXTERN CGRect CGRectIntersection(CGRect r1, CGRect r2);
CG_EXTERN CGRect CGRectUnion(CGRect r1, CGRect r2);
CG_EXTERN bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef cg_nullable dict,
                                                      CGRect* cg_nullable rect)
    CG_AVAILABLE_STARTING(10.5, 2.0);

// CGError.h
typedef CF_ENUM(int32_t, CGError) {
    kCGErrorSuccess = 0,
    kCGErrorFailure = 1000,
    kCGErrorIllegalArgument = 1001,
    kCGErrorInvalidConnection = 1002,
    kCGErrorInvalidContext = 1003,
    kCGErrorCannotComplete = 1004,
    kCGErrorNotImplemented = 1006,
    kCGErrorRangeCheck = 1007,
    kCGErrorTypeCheck = 1008,
    kCGErrorInvalidOperation = 1010,
    kCGErrorNoneAvailable = 1011,
};

// CGWindow.h
typedef uint32_t CGWindowID;
#define kCGNullWindowID ((CGWindowID)0)
typedef CF_OPTIONS(uint32_t, CGWindowListOption) {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = (1 << 0),
    kCGWindowListOptionOnScreenAboveWindow = (1 << 1),
    kCGWindowListOptionOnScreenBelowWindow = (1 << 2),
    kCGWindowListOptionIncludingWindow = (1 << 3),
    kCGWindowListExcludeDesktopElements = (1 << 4),
};
typedef CF_OPTIONS(uint32_t, CGWindowImageOption) {
    kCGWindowImageDefault = 0,
    kCGWindowImageBoundsIgnoreFraming = (1 << 0),
    kCGWindowImageShouldBeOpaque = (1 << 1),
    kCGWindowImageOnlyShadows = (1 << 2),
    kCGWindowImageBestResolution = (1 << 3),
    kCGWindowImageNominalResolution = (1 << 4),
};
CG_EXTERN const CFStringRef kCGWindowNumber CG_AVAILABLE_STARTING(10.5);
CG_EXTERN const CFStringRef kCGWindowLayer CG_AVAILABLE_STARTING(10.5);
CG_EXTERN const CFStringRef kCGWindowBounds CG_AVAILABLE_STARTING(10.5);
CG_EXTERN const CFStringRef kCGWindowOwnerPID CG_AVAILABLE_STARTING(10.5);
CG_EXTERN const CFStringRef kCGWindowOwnerName CG_AVAILABLE_STARTING(10.5);
CG_EXTERN const CFStringRef kCGWindowName CG_AVAILABLE_STARTING(10.5);
CG_EXTERN CFArrayRef __nullable CGWindowListCopyWindowInfo(CGWindowListOption option,
                                                           CGWindowID relativeToWindow)
    CG_AVAILABLE_STARTING(10.5);
CG_EXTERN CGImageRef __nullable CGWindowListCreateImageFromArray(CGRect screenBounds,
                                                                 CFArrayRef windowArray,
                                                                 CGWindowImageOption imageOption)
    CG_AVAILABLE_BUT_DEPRECATED(10.5, 14.0,
                                "This API is deprecated. Please use "
                                "ScreenCaptureKit's captureScreenshot APIs instead.");
CG_EXTERN bool CGPreflightScreenCaptureAccess(void) CG_AVAILABLE_STARTING(10.15);
CG_EXTERN bool CGRequestScreenCaptureAccess(void) CG_AVAILABLE_STARTING(10.15);

// CGWindowLevel.h
typedef int32_t CGWindowLevel;
#define kCGStatusWindowLevel ((CGWindowLevel)25)

// CGImage.h
CG_EXTERN size_t CGImageGetWidth(CGImageRef cg_nullable image) CG_AVAILABLE_STARTING(10.0, 2.0);
CG_EXTERN size_t CGImageGetHeight(CGImageRef cg_nullable image) CG_AVAILABLE_STARTING(10.0, 2.0);
CG_EXTERN CGImageRef cg_nullable CGImageRetain(CGImageRef cg_nullable image)
    CG_AVAILABLE_STARTING(10.0, 2.0);
CG_EXTERN void CGImageRelease(CGImageRef cg_nullable image) CG_AVAILABLE_STARTING(10.0, 2.0);

// CGDirectDisplay.h
typedef uint32_t CGDirectDisplayID;
CG_EXTERN CGDirectDisplayID CGMainDisplayID(void) CG_AVAILABLE_STARTING(10.2);
CG_EXTERN CGRect CGDisplayBounds(CGDirectDisplayID display) CG_AVAILABLE_STARTING(10.0);
CG_EXTERN CGError CGGetActiveDisplayList(uint32_t maxDisplays,
                                         CGDirectDisplayID* __nullable activeDisplays,
                                         uint32_t* __nullable displayCount)
    CG_AVAILABLE_STARTING(10.0);
CG_EXTERN CGError CGDisplayHideCursor(CGDirectDisplayID display) CG_AVAILABLE_STARTING(10.0);
CG_EXTERN CGError CGDisplayShowCursor(CGDirectDisplayID display) CG_AVAILABLE_STARTING(10.0);

// CGRemoteOperation.h
CG_EXTERN CGError CGWarpMouseCursorPosition(CGPoint newCursorPosition) CG_AVAILABLE_STARTING(10.0);

// CGEventTypes.h
typedef struct CF_BRIDGED_TYPE(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED_TYPE(id) __CGEventSource* CGEventSourceRef;
typedef uint16_t CGKeyCode;
typedef CF_ENUM(uint32_t, CGEventType) {
    kCGEventNull = 0,
    kCGEventLeftMouseDown = 1,
    kCGEventLeftMouseUp = 2,
    kCGEventRightMouseDown = 3,
    kCGEventRightMouseUp = 4,
    kCGEventMouseMoved = 5,
    kCGEventLeftMouseDragged = 6,
    kCGEventRightMouseDragged = 7,
    kCGEventKeyDown = 10,
    kCGEventKeyUp = 11,
    kCGEventFlagsChanged = 12,
    kCGEventScrollWheel = 22,
    kCGEventOtherMouseDown = 25,
    kCGEventOtherMouseUp = 26,
    kCGEventOtherMouseDragged = 27,
};
typedef CF_ENUM(uint32_t, CGMouseButton) {
    kCGMouseButtonLeft = 0,
    kCGMouseButtonRight = 1,
    kCGMouseButtonCenter = 2,
};
typedef CF_ENUM(uint32_t, CGEventTapLocation) {
    kCGHIDEventTap = 0,
    kCGSessionEventTap,
    kCGAnnotatedSessionEventTap,
};
typedef CF_ENUM(int32_t, CGEventSourceStateID) {
    kCGEventSourceStatePrivate = -1,
    kCGEventSourceStateCombinedSessionState = 0,
    kCGEventSourceStateHIDSystemState = 1,
};
// Apple writes these as the NX_…MASK values of IOKit/hidsystem/IOLLEvent.h.
typedef CF_OPTIONS(uint64_t, CGEventFlags) {
    kCGEventFlagMaskAlphaShift = 0x00010000,
    kCGEventFlagMaskShift = 0x00020000,
    kCGEventFlagMaskControl = 0x00040000,
    kCGEventFlagMaskAlternate = 0x00080000,
    kCGEventFlagMaskCommand = 0x00100000,
    kCGEventFlagMaskNumericPad = 0x00200000,
    kCGEventFlagMaskHelp = 0x00400000,
    kCGEventFlagMaskSecondaryFn = 0x00800000,
    kCGEventFlagMaskNonCoalesced = 0x00000100,
};
typedef CF_ENUM(uint32_t, CGEventField) {
    kCGMouseEventNumber = 0,
    kCGMouseEventClickState = 1,
    kCGKeyboardEventKeycode = 9,
    kCGEventTargetUnixProcessID = 40,
    kCGEventSourceUserData = 42,
    kCGMouseEventWindowUnderMousePointer = 91,
    kCGMouseEventWindowUnderMousePointerThatCanHandleThisEvent = 92,
};

// CGEventSource.h
CG_EXTERN CGEventSourceRef __nullable CGEventSourceCreate(CGEventSourceStateID stateID)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN bool CGEventSourceButtonState(CGEventSourceStateID stateID, CGMouseButton button)
    CG_AVAILABLE_STARTING(10.4);

// CGEvent.h
CG_EXTERN CGEventRef __nullable CGEventCreate(CGEventSourceRef __nullable source)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN CGPoint CGEventGetLocation(CGEventRef __nullable event) CG_AVAILABLE_STARTING(10.4);
CG_EXTERN CGEventRef __nullable CGEventCreateMouseEvent(CGEventSourceRef __nullable source,
                                                        CGEventType mouseType,
                                                        CGPoint mouseCursorPosition,
                                                        CGMouseButton mouseButton)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN CGEventRef __nullable CGEventCreateKeyboardEvent(CGEventSourceRef __nullable source,
                                                           CGKeyCode virtualKey, bool keyDown)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN void CGEventSetFlags(CGEventRef __nullable event, CGEventFlags flags)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN void CGEventSetIntegerValueField(CGEventRef __nullable event, CGEventField field,
                                           int64_t value) CG_AVAILABLE_STARTING(10.4);
CG_EXTERN void CGEventPost(CGEventTapLocation tap, CGEventRef __nullable event)
    CG_AVAILABLE_STARTING(10.4);
CG_EXTERN bool CGPreflightPostEventAccess(void) CG_AVAILABLE_STARTING(10.15);
CG_EXTERN bool CGRequestPostEventAccess(void) CG_AVAILABLE_STARTING(10.15);

CF_ASSUME_NONNULL_END
CF_IMPLICIT_BRIDGING_DISABLED

} // extern "C"
