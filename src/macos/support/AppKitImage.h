#pragma once

#import <AppKit/AppKit.h>

#include "core/ports/PlatformImage.hpp"

namespace quillet::macos {

// An NSImage handed to the core as a PlatformImage. It holds the image strongly (ARC), so the
// image lives as long as any ImageRef to it.
class AppKitImage final : public PlatformImage {
public:
    explicit AppKitImage(NSImage* image) : image_(image) {}

    Size pointSize() const override;
    NSImage* image() const { return image_; }

private:
    NSImage* image_;
};

// An ImageRef of an NSImage; null for nil.
ImageRef imageRef(NSImage* image);

} // namespace quillet::macos
