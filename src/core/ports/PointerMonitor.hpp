#pragma once

#include "core/ports/Geometry.hpp"

#include <cstdint>
#include <functional>
#include <optional>

namespace quillet {

// NSEvent's mask for mouse-moved events (the bit of event type 5).
inline constexpr std::uint64_t kMouseMovedEventMask = 1u << 5;

// NSEvent's global and local event monitors. Handlers run on the main thread; a local monitor
// passes its event on unchanged.
class PointerMonitor {
public:
    using Token = std::uint64_t;

    virtual ~PointerMonitor() = default;

    // Events sent to other applications; nullopt when the platform refuses the monitor.
    virtual std::optional<Token> addGlobalMonitor(std::uint64_t eventMask,
                                                  std::function<void()> handler) = 0;
    // Events sent to this application.
    virtual std::optional<Token> addLocalMonitor(std::uint64_t eventMask,
                                                 std::function<void()> handler) = 0;
    // A mouse button going down or up: the event's type (the window server's number, as in
    // MouseEventType), its modifier flags, and where the pointer was, in AppKit coordinates.
    struct ButtonChange {
        std::uint32_t type = 0;
        std::uint64_t modifierFlags = 0;
        Point location;
    };
    // Left and right mouse buttons going down and up, in events sent to other applications
    // (`global`) or to this one; nullopt when the platform refuses the monitor.
    virtual std::optional<Token>
    addButtonMonitor(bool global, std::function<void(const ButtonChange&)> handler) = 0;
    virtual void removeMonitor(Token token) = 0;
};

} // namespace quillet
