#import "macos/engine/SparkleUpdater.h"

#import <Foundation/Foundation.h>
#if QUILLET_HAS_SPARKLE
#import <Sparkle/Sparkle.h>
#endif

namespace quillet::macos {

#if QUILLET_HAS_SPARKLE

namespace {

// Whether the main bundle's Info.plist names a non-empty string under `key`, as Sparkle reads it.
bool hasInfoString(NSString* key) {
    id value = [[NSBundle mainBundle] objectForInfoDictionaryKey:key];
    return [value isKindOfClass:[NSString class]] && [(NSString*)value length] > 0;
}

} // namespace

bool SparkleUpdater::isAvailable() const {
    return hasInfoString(@"SUFeedURL") && hasInfoString(@"SUPublicEDKey");
}

void SparkleUpdater::start() {
    if (controller_ != nil) {
        return;
    }
    // Starting the updater at once begins Sparkle's scheduled checks.
    controller_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                updaterDelegate:nil
                                                             userDriverDelegate:nil];
}

void SparkleUpdater::checkForUpdates() {
    [controller_ checkForUpdates:nil];
}

#else

// Built without Sparkle: nothing to start or to check.
bool SparkleUpdater::isAvailable() const {
    return false;
}

void SparkleUpdater::start() {}

void SparkleUpdater::checkForUpdates() {}

#endif

} // namespace quillet::macos
