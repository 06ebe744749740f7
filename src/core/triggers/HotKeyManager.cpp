#include "core/triggers/HotKeyManager.hpp"

#include <utility>

namespace quillet {

void HotKeyManager::unregister() {
    if (auto hotKey = std::exchange(hotKeyRef_, std::nullopt)) {
        registrar_.unregisterEventHotKey(*hotKey);
    }
    if (auto handler = std::exchange(handlerRef_, std::nullopt)) {
        registrar_.removeEventHandler(*handler);
    }
}

void HotKeyManager::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    unregister();
    // Every hot key press of the process is ours: only one combination is ever registered.
    handlerRef_ = registrar_.installEventHandler(kHotKeyPressedEvent, [self = anchor_.ref()] {
        HotKeyManager* manager = self.get();
        if (!manager) {
            return kEventNotHandledErr;
        }
        manager->onTrigger_();
        return kNoErr;
    });
    hotKeyRef_ = registrar_.registerEventHotKey(keyCode, modifiers, {kSignature, kHotKeyID}, 0);
}

} // namespace quillet
