// Stand-in for <dispatch/dispatch.h>, for the Linux syntax check of src/macos only (Debian has
// no libdispatch package). The subset the macOS layer uses, copied from the macOS 14.2 SDK
// headers named above each group (the same text as the project's Apple API reference).
#pragma once

#import <Foundation/Foundation.h>

#include <stdint.h>

// os/object.h and dispatch/object.h: in Objective-C (OS_OBJECT_USE_OBJC) dispatch objects are
// Objective-C objects that ARC retains and releases. Each DISPATCH_DECL / DISPATCH_DECL_SUBCLASS
// declares a protocol and a typedef of an object pointer conforming to it, so a main queue is a
// serial queue is a queue, as on a Mac.
@protocol OS_dispatch_object <NSObject>
@end
typedef NSObject<OS_dispatch_object>* dispatch_object_t;
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
@protocol OS_dispatch_queue_global <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_global>* dispatch_queue_global_t;
@protocol OS_dispatch_queue_serial <OS_dispatch_queue>
@end
typedef NSObject<OS_dispatch_queue_serial>* dispatch_queue_serial_t;
@protocol OS_dispatch_queue_main <OS_dispatch_queue_serial>
@end
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;

extern "C" {

// DISPATCH_ASSUME_NONNULL_BEGIN
_Pragma("clang assume_nonnull begin")

    // dispatch/base.h
    typedef void (*dispatch_function_t)(void* _Nullable);

// dispatch/object.h
typedef void (^dispatch_block_t)(void);

// dispatch/time.h
typedef uint64_t dispatch_time_t;
#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull
#define USEC_PER_SEC 1000000ull
#define NSEC_PER_USEC 1000ull
#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) API_AVAILABLE(macos(10.6));

// sys/qos.h
typedef enum : unsigned int {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
    QOS_CLASS_USER_INITIATED = 0x19,
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_UTILITY = 0x11,
    QOS_CLASS_BACKGROUND = 0x09,
    QOS_CLASS_UNSPECIFIED = 0x00,
} qos_class_t;

// dispatch/queue.h
dispatch_queue_main_t dispatch_get_main_queue(void);
dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags)
    API_AVAILABLE(macos(10.6));
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) API_AVAILABLE(macos(10.6));
void dispatch_async_f(dispatch_queue_t queue, void* _Nullable context, dispatch_function_t work)
    API_AVAILABLE(macos(10.6));
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block)
    API_AVAILABLE(macos(10.6));
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* _Nullable context,
                      dispatch_function_t work) API_AVAILABLE(macos(10.6));

_Pragma("clang assume_nonnull end")

} // extern "C"
