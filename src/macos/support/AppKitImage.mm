#import "macos/support/AppKitImage.h"

namespace quillet::macos {

Size AppKitImage::pointSize() const {
    const NSSize size = [image_ size];
    return {size.width, size.height};
}

ImageRef imageRef(NSImage* image) {
    if (image == nil) {
        return nullptr;
    }
    return std::make_shared<AppKitImage>(image);
}

} // namespace quillet::macos
