#pragma once

#include "core/ports/AccessibilityReader.hpp"

namespace quillet::macos {

// The accessibility trust check and the frame of an application's first status item, read
// through AXUIElement and passed on as the application reports it.
class AXAccessibilityReader final : public AccessibilityReader {
public:
    bool isTrusted(bool prompt) const override;
    std::optional<Rect>
    firstExtrasMenuBarChildFrame(Pid pid,
                                 std::chrono::milliseconds messagingTimeout) const override;
};

} // namespace quillet::macos
