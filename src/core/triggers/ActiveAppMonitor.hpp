#pragma once

#include "core/ports/Workspace.hpp"
#include "core/support/WeakAnchor.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillet {

class AppPreferences;
class ControlItemManager;

// Makes the "Auto" section work: the items of an application whose rule is `dynamic` are shown
// while that application is frontmost and sent back to the hidden zone when another comes
// forward. It only asks the control item manager to move items, on its layout queue.
class ActiveAppMonitor {
public:
    // `manager` answers the control item manager if it still exists.
    using ManagerLookup = std::function<std::shared_ptr<ControlItemManager>()>;

    ActiveAppMonitor(Workspace& workspace, const AppPreferences& preferences, ManagerLookup manager)
        : workspace_(workspace), preferences_(preferences), manager_(std::move(manager)) {}
    ~ActiveAppMonitor() { stop(); }
    ActiveAppMonitor(const ActiveAppMonitor&) = delete;
    ActiveAppMonitor& operator=(const ActiveAppMonitor&) = delete;

    // Observes application activations (once, however often called) and refreshes at once.
    void start();
    // Stops observing; what is shown stays remembered.
    void stop();
    // Shows the dynamic items of the frontmost application and hides those of the others.
    void refresh();

    // A full arrangement has put every Auto item into the hidden zone, the front application's
    // too: forgets what was shown and shows the front application's items again.
    void showAgainAfterArrangement();

    // Rule keys whose items this monitor has shown and not yet hidden again.
    const std::set<std::string>& shown() const { return shown_; }

    // A rule key matches the frontmost application when they are equal, or one is the other
    // followed by "." and more (a helper of the ruled application, or the reverse).
    static bool matches(std::string_view ruleKey, std::string_view frontmost);

private:
    Workspace& workspace_;
    const AppPreferences& preferences_;
    ManagerLookup manager_;
    std::set<std::string> shown_;
    std::optional<Workspace::ObserverToken> observer_;
    WeakAnchor<ActiveAppMonitor> anchor_{this};
};

} // namespace quillet
