#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace quillet {

// A Carbon event type: class (a four-character code) and kind.
struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
    friend bool operator==(const EventTypeSpec&, const EventTypeSpec&) = default;
};

// Carbon's keyboard event class ('keyb') with its hot-key-pressed kind.
inline constexpr EventTypeSpec kHotKeyPressedEvent{('k' << 24) | ('e' << 16) | ('y' << 8) | 'b', 5};

// A hot key's identity: signature (a four-character code) and id.
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    friend bool operator==(const HotKeyID&, const HotKeyID&) = default;
};

// The platform's global hot key service (the Carbon event manager), on the event dispatcher
// target. Handles are opaque; nullopt stands for a call that handed none back.
class HotKeyRegistrar {
public:
    using Handle = std::uint64_t;
    // Runs on the main event loop for every matching event; returns an OSStatus.
    using Handler = std::function<std::int32_t()>;

    virtual ~HotKeyRegistrar() = default;

    virtual std::optional<Handle> installEventHandler(EventTypeSpec type, Handler handler) = 0;
    virtual void removeEventHandler(Handle handler) = 0;
    virtual std::optional<Handle> registerEventHotKey(std::uint32_t keyCode,
                                                      std::uint32_t modifiers, HotKeyID id,
                                                      std::uint32_t options) = 0;
    virtual void unregisterEventHotKey(Handle hotKey) = 0;
};

} // namespace quillet
