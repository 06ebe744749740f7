#include "core/engine/HID.hpp"

#include "core/menubar/WindowValueReading.hpp"
#include "core/ports/WindowListSource.hpp"

namespace quillet::HID {

std::optional<Rect> frame(const WindowListSource& windows, WindowID window) {
    std::optional<Rect> bounds;
    bool described = false;
    const bool listed = windows.visitWindowDescription(window, [&](const WindowRecord& record) {
        if (!described) {
            described = true;
            bounds = readRect(record.value(WindowKey::bounds));
        }
    });
    return listed ? bounds : std::nullopt;
}

} // namespace quillet::HID
