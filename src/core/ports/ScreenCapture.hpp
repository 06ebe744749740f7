#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/PlatformImage.hpp"

#include <cstddef>
#include <optional>

namespace quillet {

// A bitmap of one window, as the window server captured it.
struct CapturedBitmap {
    std::size_t pixelWidth = 0;
    std::size_t pixelHeight = 0;
    // The platform's bitmap; wrapped into an image of a chosen point size by `makeImage`.
    std::shared_ptr<const void> bitmap;
};

// Screen recording permission and window pictures (CGPreflightScreenCaptureAccess,
// CGWindowListCreateImageFromArray, ScreenCaptureKit).
class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;

    // Never prompts.
    virtual bool preflight() const = 0;
    // Raises the system's screen recording prompt.
    virtual void request() = 0;

    // A picture of one window at its own bounds, ignoring framing, at best resolution; nullopt
    // when the capture function is unavailable or returned nothing.
    virtual std::optional<CapturedBitmap> captureWindow(WindowID window) const = 0;
    virtual ImageRef makeImage(const CapturedBitmap& bitmap, Size pointSize) const = 0;
};

} // namespace quillet
