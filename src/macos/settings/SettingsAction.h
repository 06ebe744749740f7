#pragma once

#import <AppKit/AppKit.h>

#include <functional>

// Runs C++ when a control fires (its target and action) or when a text field's text changes (its
// delegate). Controls hold their targets and delegates weakly: whoever makes one keeps it.
@interface QuilletSettingsAction : NSObject <NSTextFieldDelegate>
- (instancetype)initWithHandler:(std::function<void(id sender)>)handler;
- (void)perform:(id)sender;
@end
