// Stand-in for <ScreenCaptureKit/ScreenCaptureKit.h>, for the Linux syntax check of src/macos
// only: the shareable-content request, as SCShareableContent.h of the macOS 14.2 SDK declares it.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#include <os/availability.h>

NS_ASSUME_NONNULL_BEGIN

// SCShareableContent.h
API_AVAILABLE(macos(12.3))
@interface SCWindow : NSObject
@property (readonly) CGWindowID windowID;
@property (readonly) CGRect frame;
@property (readonly, nullable) NSString* title;
@property (readonly) NSInteger windowLayer;
@property (readonly, getter=isOnScreen) BOOL onScreen;
@end

API_AVAILABLE(macos(12.3))
@interface SCShareableContent : NSObject
+ (void)getShareableContentWithCompletionHandler:
    (void (^)(SCShareableContent* _Nullable shareableContent,
              NSError* _Nullable error))completionHandler NS_SWIFT_ASYNC(1)
        NS_SWIFT_ASYNC_NAME(getter:current());
@property (readonly) NSArray<SCWindow*>* windows;
@end

NS_ASSUME_NONNULL_END
