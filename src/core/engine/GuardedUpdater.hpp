#pragma once

#include "core/ports/AlertPresenter.hpp"
#include "core/ports/LogSink.hpp"
#include "core/ports/Updater.hpp"

namespace quillet {

// The update controller as the rest of the app reaches it. A build that cannot update itself
// never starts the framework (Sparkle without its key refuses to start and shows an alert at
// every launch); a check for updates there tells the user plainly, in an alert, that this build
// does not update itself, instead of doing nothing visible.
class GuardedUpdater final : public Updater {
public:
    // Every reference must outlive the updater.
    GuardedUpdater(Updater& framework, AlertPresenter& alerts, LogSink& log)
        : framework_(framework), alerts_(alerts), log_(log) {}

    bool isAvailable() const override { return framework_.isAvailable(); }
    void start() override;
    void checkForUpdates() override;

    // What the user is told when this build cannot update itself.
    static Alert unavailableAlert();

private:
    Updater& framework_;
    AlertPresenter& alerts_;
    LogSink& log_;
};

} // namespace quillet
