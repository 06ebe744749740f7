#include "core/engine/GuardedUpdater.hpp"

namespace quillet {

void GuardedUpdater::start() {
    if (!isAvailable()) {
        log_.log("Quillet: software updates are not available in this build");
        return;
    }
    framework_.start();
}

void GuardedUpdater::checkForUpdates() {
    if (!isAvailable()) {
        alerts_.present(unavailableAlert(), {});
        return;
    }
    framework_.checkForUpdates();
}

Alert GuardedUpdater::unavailableAlert() {
    return {.messageText = "This build of Quillet does not update itself",
            .informativeText =
                "This copy was built without software updates, so it never looks for new "
                "versions. Released copies of Quillet (the DMG and the Homebrew cask) update "
                "themselves; to update this one, build it again from the latest source.",
            .buttons = {"OK"}};
}

} // namespace quillet
