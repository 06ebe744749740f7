#pragma once

#include "core/ports/Geometry.hpp"

#include <chrono>
#include <optional>

namespace quillet {

// What the core reads through the accessibility interface (AXUIElement…).
class AccessibilityReader {
public:
    virtual ~AccessibilityReader() = default;

    // Whether this process is a trusted accessibility client; with `prompt`, the system asks
    // the user to grant it (asynchronously, the answer is not affected).
    virtual bool isTrusted(bool prompt) const = 0;

    // Position and size of the first child of the application's "AXExtrasMenuBar", exactly as
    // the application reports them; nullopt when any attribute is missing or of the wrong kind,
    // or when the application leaves a message unanswered for `messagingTimeout` (each element
    // messaged gets that timeout; zero would leave the system's own, which is seconds long).
    virtual std::optional<Rect>
    firstExtrasMenuBarChildFrame(Pid pid, std::chrono::milliseconds messagingTimeout) const = 0;
};

} // namespace quillet
