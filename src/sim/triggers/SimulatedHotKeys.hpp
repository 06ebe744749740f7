#pragma once

#include "core/ports/HotKeyRegistrar.hpp"

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace quillet::sim {

// The Carbon event manager's hot keys, as one process sees them: handlers on the dispatcher
// target, registered combinations, and combinations that another application already holds.
class SimulatedHotKeys : public HotKeyRegistrar {
public:
    std::optional<Handle> installEventHandler(EventTypeSpec type, Handler handler) override;
    void removeEventHandler(Handle handler) override;
    std::optional<Handle> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              HotKeyID id, std::uint32_t options) override;
    void unregisterEventHotKey(Handle hotKey) override;

    // Another application holds this combination: registering it fails.
    void claimByAnotherApplication(std::uint32_t keyCode, std::uint32_t modifiers);

    // The user presses a combination. When it is registered, every handler for hot-key-pressed
    // events runs, in installation order; their statuses are returned.
    std::vector<std::int32_t> press(std::uint32_t keyCode, std::uint32_t modifiers);

    std::size_t handlerCount() const { return handlers_.size(); }
    std::size_t registrationCount() const { return hotKeys_.size(); }
    // Identities of every registration attempt, in order.
    const std::vector<HotKeyID>& requestedIDs() const { return requestedIDs_; }

private:
    using Combination = std::pair<std::uint32_t, std::uint32_t>;
    bool isRegistered(const Combination& combination) const;

    struct InstalledHandler {
        EventTypeSpec type;
        Handler handler;
    };

    Handle nextHandle_ = 1;
    std::map<Handle, InstalledHandler> handlers_;
    std::map<Handle, Combination> hotKeys_;
    std::set<Combination> claimedElsewhere_;
    std::vector<HotKeyID> requestedIDs_;
};

} // namespace quillet::sim
