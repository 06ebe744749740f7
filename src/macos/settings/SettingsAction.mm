#import "macos/settings/SettingsAction.h"

@implementation QuilletSettingsAction {
    std::function<void(id)> _handler;
}

- (instancetype)initWithHandler:(std::function<void(id sender)>)handler {
    if ((self = [super init])) {
        _handler = std::move(handler);
    }
    return self;
}

- (void)perform:(id)sender {
    // A copy: the handler may replace what holds this object's owner.
    auto handler = _handler;
    handler(sender);
}

- (void)controlTextDidChange:(NSNotification*)notification {
    [self perform:notification.object];
}

@end
