#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/PlatformImage.hpp"
#include "core/ports/ScreenCapture.hpp"

#include <optional>

namespace quillet {

class DisplayGeometry;

// Thumbnails of single menu bar item windows, when screen recording is allowed.
class ItemImageCapture {
public:
    ItemImageCapture(const ScreenCapture& capture, const DisplayGeometry& displays)
        : capture_(capture), displays_(displays) {}

    // Null without permission (never prompts), when nothing came back, or for a picture less
    // than two pixels wide or high. The image's point size undoes the screen's backing scale.
    ImageRef capture(WindowID window) const;

    // The two halves of capture(), to capture off the main thread: the window server's picture,
    // from any thread (null as above), then the image made of it, on the main thread (it reads
    // the main screen's scale from AppKit).
    std::optional<CapturedBitmap> bitmap(WindowID window) const;
    ImageRef image(const CapturedBitmap& bitmap) const;

private:
    const ScreenCapture& capture_;
    const DisplayGeometry& displays_;
};

} // namespace quillet
