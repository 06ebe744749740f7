#pragma once

#include "core/ports/DisplayGeometry.hpp"

namespace quillet::macos {

// Display geometry as the window server (CGDisplay…) and AppKit (NSScreen, NSEvent,
// NSStatusBar) report it, each in its own coordinate system.
class CGDisplayGeometry final : public DisplayGeometry {
public:
    Rect mainDisplayBounds() const override;
    std::uint32_t activeDisplayCount() const override;
    std::vector<DisplayID> activeDisplays(std::uint32_t capacity) const override;
    Rect displayBounds(DisplayID display) const override;

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    Point pointerLocation() const override;
    double statusBarThickness() const override;
};

} // namespace quillet::macos
