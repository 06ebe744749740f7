#pragma once

namespace quillet {

// NSApplication's activation policies, with AppKit's values.
enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

// The application object itself (NSApplication.shared).
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    // Asks to become the active application, ignoring the others, so that our key window
    // receives the keys. The system may refuse.
    virtual void activateIgnoringOtherApps() = 0;
    // Quits the application: its delegate hears of it first.
    virtual void terminate() = 0;
};

} // namespace quillet
