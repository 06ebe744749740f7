#pragma once

#include "core/ports/HotKeyRegistrar.hpp"
#include "core/support/WeakAnchor.hpp"

#include <cstdint>
#include <functional>
#include <optional>

namespace quillet {

// The one system-wide shortcut that toggles the hidden zone. It claims the chosen combination
// from the platform's hot key service and calls `onTrigger` on every press.
class HotKeyManager {
public:
    // "QLHK" as a four-character code.
    static constexpr std::uint32_t kSignature = ('Q' << 24) | ('L' << 16) | ('H' << 8) | 'K';
    static constexpr std::uint32_t kHotKeyID = 1;
    static constexpr std::int32_t kNoErr = 0;
    static constexpr std::int32_t kEventNotHandledErr = -9874;

    HotKeyManager(HotKeyRegistrar& registrar, std::function<void()> onTrigger)
        : registrar_(registrar), onTrigger_(std::move(onTrigger)) {}

    // Replaces any registration with this combination. The platform's answers are not checked:
    // a combination another application holds simply does nothing.
    void registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers);
    // Releases the registration and the handler, if any.
    void unregister();

    std::optional<HotKeyRegistrar::Handle> hotKeyRef() const { return hotKeyRef_; }
    std::optional<HotKeyRegistrar::Handle> handlerRef() const { return handlerRef_; }

private:
    HotKeyRegistrar& registrar_;
    std::optional<HotKeyRegistrar::Handle> hotKeyRef_;
    std::optional<HotKeyRegistrar::Handle> handlerRef_;
    std::function<void()> onTrigger_;
    WeakAnchor<HotKeyManager> anchor_{this};
};

} // namespace quillet
