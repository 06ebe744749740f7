#pragma once

namespace quillet {

// The software update framework's standard updater controller (Sparkle).
class Updater {
public:
    virtual ~Updater() = default;
    // Creates the controller with its updater started, which begins the scheduled checks.
    virtual void start() = 0;
    virtual void checkForUpdates() = 0;
};

} // namespace quillet
