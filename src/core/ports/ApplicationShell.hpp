#pragma once

namespace quillet {

// NSApplication's activation policies, with AppKit's values.
enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

// The application object itself (NSApplication.shared).
class ApplicationShell {
public:
    virtual ~ApplicationShell() = default;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
};

} // namespace quillet
