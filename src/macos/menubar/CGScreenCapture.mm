#include "macos/menubar/CGScreenCapture.h"

#import "macos/support/AppKitImage.h"
#include "macos/support/CFRef.h"

#import <AppKit/AppKit.h>
#include <CoreGraphics/CoreGraphics.h>
#import <ScreenCaptureKit/ScreenCaptureKit.h>

#include <cstdint>
#include <dlfcn.h>

namespace quillet::macos {

namespace {

using CreateImageFromArray = CGImageRef (*)(CGRect, CFArrayRef, CGWindowImageOption);

// CGWindowListCreateImageFromArray, resolved once per process from the images already loaded;
// null when the system no longer exports it. The function-local static is initialised exactly
// once even when two threads ask first at the same time. The main program's handle stays valid
// for the life of the process, so it is not closed.
CreateImageFromArray createImageFromArray() {
    static const CreateImageFromArray function = []() -> CreateImageFromArray {
        void* program = dlopen(nullptr, RTLD_NOW);
        if (program == nullptr) {
            return nullptr;
        }
        return reinterpret_cast<CreateImageFromArray>(
            dlsym(program, "CGWindowListCreateImageFromArray"));
    }();
    return function;
}

} // namespace

bool CGScreenCapture::preflight() const {
    return CGPreflightScreenCaptureAccess();
}

void CGScreenCapture::request() {
    // Asking for the shareable content is what makes the system show its screen recording
    // request; the answer itself is read later through preflight().
    [SCShareableContent getShareableContentWithCompletionHandler:^(SCShareableContent*, NSError*){
    }];
}

std::optional<CapturedBitmap> CGScreenCapture::captureWindow(WindowID window) const {
    const CreateImageFromArray create = createImageFromArray();
    if (create == nullptr) {
        return std::nullopt;
    }
    // The array holds the window number itself, not an object: no retain callbacks.
    const void* windows[] = {reinterpret_cast<const void*>(static_cast<std::uintptr_t>(window))};
    CFRef<CFArrayRef> array(CFArrayCreate(kCFAllocatorDefault, windows, 1, nullptr));
    if (!array) {
        return std::nullopt;
    }
    CGImageRef image = create(CGRectNull, array.get(),
                              kCGWindowImageBoundsIgnoreFraming | kCGWindowImageBestResolution);
    if (image == nullptr) {
        return std::nullopt;
    }
    const std::size_t width = CGImageGetWidth(image);
    const std::size_t height = CGImageGetHeight(image);
    // The +1 reference from the Create call is released by the last copy of the bitmap (or by
    // shared_ptr itself, should allocating its control block fail).
    return CapturedBitmap{width, height, std::shared_ptr<const void>(image, CFReleaser{})};
}

ImageRef CGScreenCapture::makeImage(const CapturedBitmap& bitmap, Size pointSize) const {
    if (!bitmap.bitmap) {
        return nullptr;
    }
    // captureWindow stored a CGImageRef; the NSImage keeps its own reference to it.
    auto image = static_cast<CGImageRef>(const_cast<void*>(bitmap.bitmap.get()));
    return imageRef(
        [[NSImage alloc] initWithCGImage:image size:NSMakeSize(pointSize.width, pointSize.height)]);
}

} // namespace quillet::macos
