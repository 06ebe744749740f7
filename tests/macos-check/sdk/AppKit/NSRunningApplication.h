// Replaces GNUstep's <AppKit/NSRunningApplication.h> for the Linux syntax check of src/macos only.
//
// GNUstep returns untyped arrays, so `…runningApplicationsWithBundleIdentifier:id].firstObject
// .processIdentifier`, correct on a Mac, fails here (a property of `id`); its activation policy
// and options are plain integers where Apple's are an enum and options. This is Apple's
// declaration from NSRunningApplication.h of the macOS 14.2 SDK (frontmostApplication and
// menuBarOwningApplication are NSWorkspace.h's, declared here as GNUstep does).
#ifndef _GNUstep_H_NSRunningApplication
#define _GNUstep_H_NSRunningApplication

#import <AppKit/NSWorkspace.h>
#import <Foundation/Foundation.h>
#include <os/availability.h>

#include <sys/types.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps API_DEPRECATED(
        "ignoringOtherApps is deprecated in macOS 14 and will have no effect.",
        macos(10.6, 14.0)) = 1 << 1,
} API_AVAILABLE(macos(10.6));

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
} API_AVAILABLE(macos(10.6));

@class NSDate, NSImage, NSURL;

API_AVAILABLE(macos(10.6))
@interface NSRunningApplication : NSObject
@property (readonly, getter=isTerminated) BOOL terminated;
@property (readonly, getter=isFinishedLaunching) BOOL finishedLaunching;
@property (readonly, getter=isHidden) BOOL hidden;
@property (readonly, getter=isActive) BOOL active;
@property (readonly) BOOL ownsMenuBar API_AVAILABLE(macos(10.7));
@property (readonly) NSApplicationActivationPolicy activationPolicy;
@property (nullable, readonly, copy) NSString* localizedName;
@property (nullable, readonly, copy) NSString* bundleIdentifier;
@property (nullable, readonly, copy) NSURL* bundleURL;
@property (nullable, readonly, copy) NSURL* executableURL;
@property (readonly) pid_t processIdentifier;
@property (nullable, readonly, copy) NSDate* launchDate;
@property (nullable, readonly, strong) NSImage* icon;
@property (readonly) NSInteger executableArchitecture;
- (BOOL)hide;
- (BOOL)unhide;
- (BOOL)activateFromApplication:(NSRunningApplication*)application
                        options:(NSApplicationActivationOptions)options API_AVAILABLE(macos(14.0));
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
- (BOOL)terminate;
- (BOOL)forceTerminate;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:
    (NSString*)bundleIdentifier;
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
@property (class, readonly, strong) __kindof NSRunningApplication* currentApplication;
+ (void)terminateAutomaticallyTerminableApplications;
@end

@interface NSWorkspace (NSWorkspaceRunningApplications)
@property (readonly, copy)
    NSArray<NSRunningApplication*>* runningApplications API_AVAILABLE(macos(10.6));
@property (nullable, readonly, strong)
    NSRunningApplication* frontmostApplication API_AVAILABLE(macos(10.7));
@property (nullable, readonly, strong)
    NSRunningApplication* menuBarOwningApplication API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END

#endif // _GNUstep_H_NSRunningApplication
