#include "core/menubar/ItemImageCapture.hpp"

#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/ScreenCapture.hpp"

namespace quillet {

namespace {

// Used when there is no main screen to ask, as on a Retina display.
constexpr double kDefaultBackingScale = 2.0;

} // namespace

ImageRef ItemImageCapture::capture(WindowID window) const {
    auto picture = bitmap(window);
    return picture ? image(*picture) : nullptr;
}

std::optional<CapturedBitmap> ItemImageCapture::bitmap(WindowID window) const {
    if (!capture_.preflight()) {
        return std::nullopt;
    }
    auto bitmap = capture_.captureWindow(window);
    if (!bitmap || bitmap->pixelWidth < 2 || bitmap->pixelHeight < 2) {
        return std::nullopt;
    }
    return bitmap;
}

ImageRef ItemImageCapture::image(const CapturedBitmap& bitmap) const {
    auto screen = displays_.mainScreen();
    const double scale = screen ? screen->backingScaleFactor : kDefaultBackingScale;
    return capture_.makeImage(bitmap, {static_cast<double>(bitmap.pixelWidth) / scale,
                                       static_cast<double>(bitmap.pixelHeight) / scale});
}

} // namespace quillet
