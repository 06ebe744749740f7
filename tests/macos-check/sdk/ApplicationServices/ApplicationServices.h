// Stand-in for <ApplicationServices/ApplicationServices.h>, for the Linux syntax check of
// src/macos only: CoreGraphics plus the Accessibility (HIServices) subset the macOS layer uses,
// copied from the macOS 14.2 SDK headers named above each group (the same text as the project's
// Apple API reference).
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <sys/types.h>

extern "C" {

CF_ASSUME_NONNULL_BEGIN

// AXError.h
typedef CF_ENUM(SInt32, AXError) {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorInvalidUIElementObserver = -25203,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
    kAXErrorNotificationUnsupported = -25207,
    kAXErrorNotImplemented = -25208,
    kAXErrorNotificationAlreadyRegistered = -25209,
    kAXErrorNotificationNotRegistered = -25210,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
    kAXErrorParameterizedAttributeUnsupported = -25213,
    kAXErrorNotEnoughPrecision = -25214,
};

// AXValue.h
typedef CF_ENUM(UInt32, AXValueType) {
    kAXValueTypeCGPoint = 1,
    kAXValueTypeCGSize = 2,
    kAXValueTypeCGRect = 3,
    kAXValueTypeCFRange = 4,
    kAXValueTypeAXError = 5,
    kAXValueTypeIllegal = 0,
};
// The older names are plain UInt32 constants, which C++ does not convert to AXValueType.
static const UInt32 kAXValueCGPointType = kAXValueTypeCGPoint;
static const UInt32 kAXValueCGSizeType = kAXValueTypeCGSize;
static const UInt32 kAXValueCGRectType = kAXValueTypeCGRect;
typedef const struct CF_BRIDGED_TYPE(id) __AXValue* AXValueRef;
extern CFTypeID AXValueGetTypeID(void) AVAILABLE_MAC_OS_X_VERSION_10_3_AND_LATER;
extern AXValueType AXValueGetType(AXValueRef value);
extern Boolean AXValueGetValue(AXValueRef value, AXValueType theType, void* valuePtr);

// AXUIElement.h
typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement* AXUIElementRef;
extern Boolean AXIsProcessTrusted(void) CF_AVAILABLE_MAC(10_4);
extern Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef __nullable options)
    CF_AVAILABLE_MAC(10_9);
extern CFStringRef kAXTrustedCheckOptionPrompt CF_AVAILABLE_MAC(10_9);
extern CFTypeID AXUIElementGetTypeID(void);
extern AXUIElementRef AXUIElementCreateApplication(pid_t pid);
extern AXUIElementRef AXUIElementCreateSystemWide(void);
extern AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid);
extern AXError
AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                              CFTypeRef __nullable* _Nonnull CF_RETURNS_RETAINED value);
extern AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
extern AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds)
    CF_AVAILABLE_MAC(10_4);

CF_ASSUME_NONNULL_END

} // extern "C"

// AXAttributeConstants.h
#define kAXRoleAttribute CFSTR("AXRole")
#define kAXTitleAttribute CFSTR("AXTitle")
#define kAXDescriptionAttribute CFSTR("AXDescription")
#define kAXChildrenAttribute CFSTR("AXChildren")
#define kAXPositionAttribute CFSTR("AXPosition")
#define kAXSizeAttribute CFSTR("AXSize")
#define kAXExtrasMenuBarAttribute CFSTR("AXExtrasMenuBar")
#define kAXWindowsAttribute CFSTR("AXWindows")
#define kAXIdentifierAttribute CFSTR("AXIdentifier")

// AXActionConstants.h
#define kAXPressAction CFSTR("AXPress")
