#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace quillet {

// NSEvent's mask for key-down events (the bit of event type 10).
inline constexpr std::uint64_t kKeyDownEventMask = 1u << 10;

// One key event: the platform's virtual key code, pressed or released.
struct KeyEvent {
    std::uint16_t keyCode = 0;
    bool keyDown = true;
    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

// NSEvent's local monitors for key events: they see the keys sent to this application, on the
// main thread, before its windows do.
class KeyMonitor {
public:
    using Token = std::uint64_t;
    // True swallows the event; false passes it on unchanged.
    using Handler = std::function<bool(const KeyEvent&)>;

    virtual ~KeyMonitor() = default;

    // Nullopt when the platform refuses the monitor.
    virtual std::optional<Token> addLocalMonitor(std::uint64_t eventMask, Handler handler) = 0;
    virtual void removeMonitor(Token token) = 0;
};

} // namespace quillet
