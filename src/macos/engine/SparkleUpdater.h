#pragma once

#include "core/ports/LogSink.hpp"
#include "core/ports/Updater.hpp"

#if QUILLET_HAS_SPARKLE
@class SPUStandardUpdaterController;
#endif

namespace quillet::macos {

// Software updates through Sparkle 2's standard updater controller. Sparkle is optional when
// building: an app built without it (QUILLET_HAS_SPARKLE off) has no way to update itself, so
// there start() has nothing to start and a check for updates says so in the system log.
class SparkleUpdater final : public Updater {
public:
    // `log` must outlive the updater.
    explicit SparkleUpdater(LogSink& log) : log_(log) {}

    void start() override;
    void checkForUpdates() override;

private:
#if QUILLET_HAS_SPARKLE
    // Sparkle checks on its schedule only while its controller lives.
    SPUStandardUpdaterController* controller_ = nil;
#endif
    // Written to only by a build without Sparkle.
    [[maybe_unused]] LogSink& log_;
};

} // namespace quillet::macos
