#import "macos/engine/SparkleUpdater.h"

#if QUILLET_HAS_SPARKLE
#import <Sparkle/Sparkle.h>
#endif

namespace quillet::macos {

#if QUILLET_HAS_SPARKLE

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

// Built without Sparkle: there is no updater to start.
void SparkleUpdater::start() {}

void SparkleUpdater::checkForUpdates() {
    log_.log("Quillet: software updates are not available in this build");
}

#endif

} // namespace quillet::macos
