#pragma once

#include "core/ports/HotKeyRegistrar.hpp"

#include <memory>

namespace quillet::macos {

// Global hot keys through the Carbon event manager, on the event dispatcher target: handlers
// installed for an event type and the combinations registered there. Main thread only.
class CarbonHotKeyRegistrar final : public HotKeyRegistrar {
public:
    CarbonHotKeyRegistrar();
    // Releases whatever is still registered or installed: Carbon must not call a handler that
    // went with this object.
    ~CarbonHotKeyRegistrar() override;
    CarbonHotKeyRegistrar(const CarbonHotKeyRegistrar&) = delete;
    CarbonHotKeyRegistrar& operator=(const CarbonHotKeyRegistrar&) = delete;

    std::optional<Handle> installEventHandler(EventTypeSpec type, Handler handler) override;
    void removeEventHandler(Handle handler) override;
    std::optional<Handle> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              HotKeyID hotKeyID, std::uint32_t options) override;
    void unregisterEventHotKey(Handle hotKey) override;

private:
    // Carbon's references by handle (Carbon's types, so kept out of this header).
    struct Registrations;
    std::unique_ptr<Registrations> registrations_;
};

} // namespace quillet::macos
