#pragma once

#include "core/ports/ScreenCapture.hpp"

namespace quillet::macos {

// The screen recording permission (CGPreflightScreenCaptureAccess, ScreenCaptureKit) and
// pictures of single windows (CGWindowListCreateImageFromArray, looked up at run time because
// the SDK marks it unavailable for direct linking).
class CGScreenCapture final : public ScreenCapture {
public:
    bool preflight() const override;
    void request() override;
    std::optional<CapturedBitmap> captureWindow(WindowID window) const override;
    ImageRef makeImage(const CapturedBitmap& bitmap, Size pointSize) const override;
};

} // namespace quillet::macos
