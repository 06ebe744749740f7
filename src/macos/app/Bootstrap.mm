#import "macos/app/Bootstrap.h"

@implementation Bootstrap

+ (Bootstrap*)shared {
    // Initialised once, thread-safely, on first access.
    static Bootstrap* const shared = [[Bootstrap alloc] init];
    return shared;
}

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        _delegate = [[AppDelegate alloc] init];
    }
    return self;
}

@end
