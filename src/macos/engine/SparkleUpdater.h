#pragma once

#include "core/ports/Updater.hpp"

#if QUILLET_HAS_SPARKLE
@class SPUStandardUpdaterController;
#endif

namespace quillet::macos {

// Software updates through Sparkle 2's standard updater controller. Sparkle is optional when
// building (QUILLET_HAS_SPARKLE); a build without it, or whose Info.plist lacks the feed or the
// key, is unavailable, and the core then neither starts nor checks it.
class SparkleUpdater final : public Updater {
public:
    bool isAvailable() const override;
    void start() override;
    void checkForUpdates() override;

#if QUILLET_HAS_SPARKLE
private:
    // Sparkle checks on its schedule only while its controller lives.
    SPUStandardUpdaterController* controller_ = nil;
#endif
};

} // namespace quillet::macos
