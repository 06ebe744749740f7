#import "macos/app/AppDelegate.h"

@implementation AppDelegate
@end
