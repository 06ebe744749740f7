#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// The application's delegate: hands AppKit's launch and quit notifications to the core's
// application delegate, which it builds, together with the services, once launching has
// finished.
@interface AppDelegate : NSObject <NSApplicationDelegate>
@end

NS_ASSUME_NONNULL_END
