#include "sim/triggers/SimulatedHotKeys.hpp"

#include <algorithm>

namespace quillet::sim {

std::optional<HotKeyRegistrar::Handle> SimulatedHotKeys::installEventHandler(EventTypeSpec type,
                                                                             Handler handler) {
    handlers_.emplace(nextHandle_, InstalledHandler{type, std::move(handler)});
    return nextHandle_++;
}

void SimulatedHotKeys::removeEventHandler(Handle handler) {
    handlers_.erase(handler);
}

std::optional<HotKeyRegistrar::Handle>
SimulatedHotKeys::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                      std::uint32_t) {
    requestedIDs_.push_back(id);
    const Combination combination{keyCode, modifiers};
    if (claimedElsewhere_.contains(combination) || isRegistered(combination)) {
        return std::nullopt;
    }
    hotKeys_.emplace(nextHandle_, combination);
    return nextHandle_++;
}

void SimulatedHotKeys::unregisterEventHotKey(Handle hotKey) {
    hotKeys_.erase(hotKey);
}

bool SimulatedHotKeys::isRegistered(const Combination& combination) const {
    return std::any_of(hotKeys_.begin(), hotKeys_.end(),
                       [&](const auto& entry) { return entry.second == combination; });
}

void SimulatedHotKeys::claimByAnotherApplication(std::uint32_t keyCode, std::uint32_t modifiers) {
    claimedElsewhere_.insert({keyCode, modifiers});
}

std::vector<std::int32_t> SimulatedHotKeys::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::vector<std::int32_t> statuses;
    if (!isRegistered({keyCode, modifiers})) {
        return statuses;
    }
    // Copied first: a handler may install or remove handlers.
    std::vector<Handler> matching;
    for (const auto& [handle, installed] : handlers_) {
        if (installed.type == kHotKeyPressedEvent) {
            matching.push_back(installed.handler);
        }
    }
    for (const auto& handler : matching) {
        statuses.push_back(handler());
    }
    return statuses;
}

} // namespace quillet::sim
