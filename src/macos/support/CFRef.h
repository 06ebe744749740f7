#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

namespace quillet::macos {

// Releases a Core Foundation object obtained under the Create/Copy rule. ARC never releases CF
// types, so every +1 reference the adapters receive is held by one of these.
struct CFReleaser {
    // shared_ptr calls its deleter even for a null pointer, and CFRelease(NULL) crashes.
    void operator()(CFTypeRef object) const noexcept {
        if (object != nullptr) {
            CFRelease(object);
        }
    }
};

// Owns one +1 reference to a CF object of type `Ref` (CFArrayRef, AXUIElementRef, …).
template <typename Ref> using CFRef = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

} // namespace quillet::macos
