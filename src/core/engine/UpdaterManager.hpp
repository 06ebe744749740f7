#pragma once

#include "core/ports/Updater.hpp"

namespace quillet {

// Owns the software update controller for the life of the process. Creating the manager starts
// the updater, which begins the scheduled update checks from that moment; the application makes
// it once during launch and hands `controller()` to the "Check for Updates…" menu entry.
class UpdaterManager {
public:
    // `controller` must outlive the manager.
    explicit UpdaterManager(Updater& controller);
    UpdaterManager(const UpdaterManager&) = delete;
    UpdaterManager& operator=(const UpdaterManager&) = delete;

    Updater& controller() const { return controller_; }

private:
    Updater& controller_;
};

} // namespace quillet
