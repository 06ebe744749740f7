// Stand-in for <Sparkle/Sparkle.h> (Sparkle 2), for the Linux syntax check of src/macos only: the
// standard updater controller as Sparkle's SPUStandardUpdaterController.h declares it.
#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// SPUUpdaterDelegate.h, SPUStandardUserDriverDelegate.h
@protocol SPUUpdaterDelegate <NSObject>
@end
@protocol SPUStandardUserDriverDelegate <NSObject>
@end

// SPUStandardUpdaterController.h
@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(nullable id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:
                         (nullable id<SPUStandardUserDriverDelegate>)userDriverDelegate;
- (instancetype)init NS_UNAVAILABLE;
- (void)startUpdater;
- (IBAction)checkForUpdates:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
