#include "macos/app/Platform.h"

namespace quillet::macos {

Platform& Platform::shared() {
    static Platform platform;
    return platform;
}

} // namespace quillet::macos
