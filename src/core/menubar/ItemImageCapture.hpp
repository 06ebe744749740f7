#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/PlatformImage.hpp"

namespace quillet {

class DisplayGeometry;
class ScreenCapture;

// Thumbnails of single menu bar item windows, when screen recording is allowed.
class ItemImageCapture {
public:
    ItemImageCapture(const ScreenCapture& capture, const DisplayGeometry& displays)
        : capture_(capture), displays_(displays) {}

    // Null without permission (never prompts), when nothing came back, or for a picture less
    // than two pixels wide or high. The image's point size undoes the screen's backing scale.
    ImageRef capture(WindowID window) const;

private:
    const ScreenCapture& capture_;
    const DisplayGeometry& displays_;
};

} // namespace quillet
