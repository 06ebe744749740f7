// Stand-in for <os/availability.h> of Apple's SDK, for the Linux syntax check of src/macos only.
//
// Apple's macros attach macOS availability attributes. Clang ignores a macOS availability attribute
// when the target is Linux, so these expand to nothing: availability ("only on macOS 14") and
// deprecation are checked by the build on a Mac, not here. Declarations in this folder still write
// them exactly as Apple's headers do, so the text can be compared with the SDK.
#pragma once

#define API_AVAILABLE(...)
#define API_UNAVAILABLE(...)
#define API_DEPRECATED(...)
#define API_DEPRECATED_WITH_REPLACEMENT(...)
// <os/availability.h>: a version far in the future, "deprecated some day", which never warns.
#define API_TO_BE_DEPRECATED 100000

// <AvailabilityMacros.h> and <CoreFoundation/CFAvailability.h> spell the same thing differently.
#define AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER
#define AVAILABLE_MAC_OS_X_VERSION_10_3_AND_LATER
#define CF_AVAILABLE_MAC(...)
#define CG_AVAILABLE_STARTING(...)
#define CG_AVAILABLE_BUT_DEPRECATED(...)

// Swift-only annotations: nothing for C++.
#define NS_SWIFT_NAME(...)
#define NS_SWIFT_ASYNC(...)
#define NS_SWIFT_ASYNC_NAME(...)
#define NS_SWIFT_UI_ACTOR
#define NS_SWIFT_SENDABLE
#define NS_REFINED_FOR_SWIFT
#define DISPATCH_REFINED_FOR_SWIFT
#define DISPATCH_SWIFT_NAME(...)
