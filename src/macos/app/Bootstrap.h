#pragma once

#import "macos/app/AppDelegate.h"

NS_ASSUME_NONNULL_BEGIN

// Keeps the application delegate alive for the life of the process: the application's delegate
// slot holds it only weakly. Created, together with its delegate, on first access.
@interface Bootstrap : NSObject

@property (class, readonly, strong) Bootstrap* shared;
@property (readonly, strong) AppDelegate* delegate;

@end

NS_ASSUME_NONNULL_END
