#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// The application's delegate: the resident agent's launch and quit handlers belong here. The
// launch sequence has not been added yet, so for now the agent runs its run loop with nothing
// started.
@interface AppDelegate : NSObject <NSApplicationDelegate>
@end

NS_ASSUME_NONNULL_END
