#pragma once

namespace quillet {

// The software update framework's standard updater controller (Sparkle).
class Updater {
public:
    virtual ~Updater() = default;
    // Whether this build can update itself: the framework is in the app and the app's bundle
    // names both its update feed and the key that signs the updates.
    virtual bool isAvailable() const = 0;
    // Creates the controller with its updater started, which begins the scheduled checks.
    virtual void start() = 0;
    virtual void checkForUpdates() = 0;
};

} // namespace quillet
