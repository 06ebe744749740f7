// Stand-in for <CoreFoundation/CoreFoundation.h>, for the Linux syntax check of src/macos only.
//
// Debian has no GNUstep CoreFoundation (corebase), so this declares the subset of Apple's
// CoreFoundation that the macOS layer uses, copied from the macOS 14.2 SDK headers named above
// each group (the same text as the project's Apple API reference). Nullability follows Apple:
// of these headers only CFPreferences.h assumes nonnull.
#pragma once

#include <MacTypes.h>
#include <os/availability.h>

#include <stdint.h>

// Clang predefines these nullability spellings when it targets Darwin. (`__nonnull` is left out:
// glibc already uses that name for a function-like macro; declarations here write `_Nonnull`.)
#define __nullable _Nullable
#define __null_unspecified _Null_unspecified

// CFAvailability.h, the C++11 branch: a CF_ENUM is a real enum with a fixed underlying type, a
// CF_OPTIONS is an integer typedef whose constants combine with `|`.
#define CF_ENUM(_type, _name)                                                                      \
    enum _name : _type _name;                                                                      \
    enum _name : _type
#define CF_OPTIONS(_type, _name)                                                                   \
    _type _name;                                                                                   \
    enum : _name

// CFBase.h
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#define CF_EXPORT extern
#define CF_INLINE static __inline__ __attribute__((always_inline))
#define CF_BRIDGED_TYPE(T) __attribute__((objc_bridge(T)))
#define CF_BRIDGED_MUTABLE_TYPE(T) __attribute__((objc_bridge_mutable(T)))
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_CONSUMED __attribute__((cf_consumed))
#define CF_IMPLICIT_BRIDGING_ENABLED _Pragma("clang arc_cf_code_audited begin")
#define CF_IMPLICIT_BRIDGING_DISABLED _Pragma("clang arc_cf_code_audited end")
#define CF_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define CF_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

CF_EXTERN_C_BEGIN

// CFBase.h (the non-__LLP64__ branch, as on macOS)
typedef unsigned long CFTypeID;
typedef unsigned long CFOptionFlags;
typedef unsigned long CFHashCode;
typedef signed long CFIndex;

typedef const CF_BRIDGED_TYPE(id) void* CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef struct CF_BRIDGED_MUTABLE_TYPE(NSMutableString) __CFString* CFMutableStringRef;
typedef CF_BRIDGED_TYPE(id) CFTypeRef CFPropertyListRef;
typedef const struct CF_BRIDGED_TYPE(id) __CFAllocator* CFAllocatorRef;

static const CFIndex kCFNotFound = -1;

CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;

CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef cf);
CF_EXPORT CFTypeRef CFRetain(CFTypeRef cf);
CF_EXPORT void CFRelease(CFTypeRef cf);
CF_EXPORT Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2);
CF_IMPLICIT_BRIDGING_DISABLED

// CFArray.h
typedef const void* (*CFArrayRetainCallBack)(CFAllocatorRef allocator, const void* value);
typedef void (*CFArrayReleaseCallBack)(CFAllocatorRef allocator, const void* value);
typedef CFStringRef (*CFArrayCopyDescriptionCallBack)(const void* value);
typedef Boolean (*CFArrayEqualCallBack)(const void* value1, const void* value2);
typedef struct {
    CFIndex version;
    CFArrayRetainCallBack retain;
    CFArrayReleaseCallBack release;
    CFArrayCopyDescriptionCallBack copyDescription;
    CFArrayEqualCallBack equal;
} CFArrayCallBacks;

typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;

CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT const CFArrayCallBacks kCFTypeArrayCallBacks;
CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex numValues,
                                   const CFArrayCallBacks* callBacks);
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef theArray);
CF_EXPORT const void* CFArrayGetValueAtIndex(CFArrayRef theArray, CFIndex idx);
CF_IMPLICIT_BRIDGING_DISABLED

// CFDictionary.h
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;

CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);
CF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef theDict);
CF_EXPORT const void* CFDictionaryGetValue(CFDictionaryRef theDict, const void* key);
CF_EXPORT void CFDictionaryGetKeysAndValues(CFDictionaryRef theDict, const void** keys,
                                            const void** values);
CF_IMPLICIT_BRIDGING_DISABLED

// CFNumber.h
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean* CFBooleanRef;
typedef const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber* CFNumberRef;

typedef CF_ENUM(CFIndex, CFNumberType) {
    kCFNumberSInt8Type = 1,
    kCFNumberSInt16Type = 2,
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat32Type = 5,
    kCFNumberFloat64Type = 6,
    kCFNumberCharType = 7,
    kCFNumberShortType = 8,
    kCFNumberIntType = 9,
    kCFNumberLongType = 10,
    kCFNumberLongLongType = 11,
    kCFNumberFloatType = 12,
    kCFNumberDoubleType = 13,
    kCFNumberCFIndexType = 14,
    kCFNumberNSIntegerType = 15,
    kCFNumberCGFloatType = 16,
    kCFNumberMaxType = 16,
};

CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;
CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);
CF_EXPORT CFTypeID CFNumberGetTypeID(void);
CF_EXPORT Boolean CFNumberIsFloatType(CFNumberRef number);
CF_EXPORT Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr);
CF_IMPLICIT_BRIDGING_DISABLED

// CFString.h
typedef UInt32 CFStringEncoding;
typedef CF_ENUM(CFStringEncoding, CFStringBuiltInEncodings) {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingNextStepLatin = 0x0B01,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingNonLossyASCII = 0x0BFF,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF32 = 0x0c000100,
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1c000100,
};

// CFString.h, the __CONSTANT_CFSTRINGS__ branch (clang defines it here as on a Mac).
#define CFSTR(cStr) ((CFStringRef)__builtin___CFStringMakeConstantString("" cStr ""))

CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT CFTypeID CFStringGetTypeID(void);
CF_EXPORT CFIndex CFStringGetLength(CFStringRef theString);
CF_EXPORT Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                                     CFStringEncoding encoding);
CF_EXPORT const char* CFStringGetCStringPtr(CFStringRef theString, CFStringEncoding encoding);
CF_EXPORT CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CF_IMPLICIT_BRIDGING_DISABLED

// CFPreferences.h
CF_IMPLICIT_BRIDGING_ENABLED
CF_ASSUME_NONNULL_BEGIN
CF_EXPORT const CFStringRef kCFPreferencesCurrentApplication;
CF_EXPORT _Nullable CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key,
                                                                CFStringRef applicationID);
CF_EXPORT void CFPreferencesSetAppValue(CFStringRef key, _Nullable CFPropertyListRef value,
                                        CFStringRef applicationID);
CF_EXPORT Boolean CFPreferencesAppSynchronize(CFStringRef applicationID);
CF_ASSUME_NONNULL_END
CF_IMPLICIT_BRIDGING_DISABLED

CF_EXTERN_C_END
