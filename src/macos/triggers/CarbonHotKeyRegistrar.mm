#include "macos/triggers/CarbonHotKeyRegistrar.h"

#include <Carbon/Carbon.h>

#include <map>
#include <utility>

namespace quillet::macos {

struct CarbonHotKeyRegistrar::Registrations {
    struct InstalledHandler {
        EventHandlerRef ref;
        // On the heap, so that the address Carbon holds as user data never moves.
        std::unique_ptr<Handler> handler;
    };

    Handle nextHandle = 1;
    std::map<Handle, InstalledHandler> handlers;
    std::map<Handle, EventHotKeyRef> hotKeys;
};

namespace {

// The one function Carbon calls for every installed handler; the user data is that
// installation's own handler, whose status goes back to Carbon.
OSStatus callInstalledHandler(EventHandlerCallRef, EventRef, void* userData) {
    return (*static_cast<const HotKeyRegistrar::Handler*>(userData))();
}

} // namespace

CarbonHotKeyRegistrar::CarbonHotKeyRegistrar()
    : registrations_(std::make_unique<Registrations>()) {}

CarbonHotKeyRegistrar::~CarbonHotKeyRegistrar() {
    for (const auto& [handle, hotKey] : registrations_->hotKeys) {
        UnregisterEventHotKey(hotKey);
    }
    for (const auto& [handle, installed] : registrations_->handlers) {
        RemoveEventHandler(installed.ref);
    }
}

// `HotKeyRegistrar::Handle` spelled out in the return types: Carbon's MacTypes.h declares a
// global `Handle` of its own.
std::optional<HotKeyRegistrar::Handle>
CarbonHotKeyRegistrar::installEventHandler(EventTypeSpec type, Handler handler) {
    auto held = std::make_unique<Handler>(std::move(handler));
    const ::EventTypeSpec carbonType{type.eventClass, type.eventKind};
    EventHandlerRef ref = nullptr;
    // The status is not read: a reference that came back is an installed handler.
    InstallEventHandler(GetEventDispatcherTarget(), callInstalledHandler, 1, &carbonType,
                        held.get(), &ref);
    if (ref == nullptr) {
        return std::nullopt;
    }
    const Handle handle = registrations_->nextHandle++;
    registrations_->handlers.emplace(handle, Registrations::InstalledHandler{ref, std::move(held)});
    return handle;
}

void CarbonHotKeyRegistrar::removeEventHandler(Handle handler) {
    // The extracted entry keeps the handler alive until Carbon has let go of it.
    if (auto removed = registrations_->handlers.extract(handler)) {
        RemoveEventHandler(removed.mapped().ref);
    }
}

std::optional<HotKeyRegistrar::Handle>
CarbonHotKeyRegistrar::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                           HotKeyID hotKeyID, std::uint32_t options) {
    EventHotKeyRef ref = nullptr;
    // Nor is this status: the combination is ours when a reference came back.
    RegisterEventHotKey(keyCode, modifiers, EventHotKeyID{hotKeyID.signature, hotKeyID.id},
                        GetEventDispatcherTarget(), options, &ref);
    if (ref == nullptr) {
        return std::nullopt;
    }
    const Handle handle = registrations_->nextHandle++;
    registrations_->hotKeys.emplace(handle, ref);
    return handle;
}

void CarbonHotKeyRegistrar::unregisterEventHotKey(Handle hotKey) {
    if (auto removed = registrations_->hotKeys.extract(hotKey)) {
        UnregisterEventHotKey(removed.mapped());
    }
}

} // namespace quillet::macos
