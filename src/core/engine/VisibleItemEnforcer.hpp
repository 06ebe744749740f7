#pragma once

#include "core/menubar/ItemEnumerator.hpp"
#include "core/ports/Workspace.hpp"
#include "core/support/Task.hpp"
#include "core/support/WeakAnchor.hpp"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quillet {

class AppPreferences;
class ControlItemManager;
class DisplayGeometry;
class Scheduler;
class WindowListSource;

// Brings the status items of newly launched applications into the visible zone: the menu bar
// puts a new item wherever it likes, usually among the hidden ones. After each launch the menu
// bar is scanned a few times (items appear late) and every item not seen before is moved, unless
// a rule places it elsewhere. Main thread only.
class VisibleItemEnforcer {
public:
    // Reaches the control item manager weakly; empty when there is none.
    using ManagerLookup = std::function<std::shared_ptr<ControlItemManager>()>;

    // Every reference must outlive the enforcer.
    struct Dependencies {
        Scheduler& scheduler;
        Workspace& workspace;
        const WindowListSource& windows;
        const DisplayGeometry& displays;
        const AppPreferences& preferences;
        Pid ownPID = 0;
        ManagerLookup controlItemManager;
        OwnItemFrames ownItems;
    };

    // When the scans fall, counted from the launch that triggers them.
    static constexpr std::array<Duration, 3> kScanOffsets{std::chrono::milliseconds(500),
                                                          std::chrono::milliseconds(1200),
                                                          std::chrono::milliseconds(2500)};

    explicit VisibleItemEnforcer(Dependencies dependencies);
    VisibleItemEnforcer(const VisibleItemEnforcer&) = delete;
    VisibleItemEnforcer& operator=(const VisibleItemEnforcer&) = delete;
    ~VisibleItemEnforcer();

    // Watches application launches; calling it again changes nothing.
    void start();
    // Stops watching and drops a pending series of scans.
    void stop();

    // Takes every item in the menu bar now as known; until the first seeding nothing is promoted.
    void seedFromCurrentItems();
    // Starts a new series of scans, replacing a pending one.
    void scheduleScan();
    // Moves the items that were not there at the last scan or seeding into the visible zone,
    // unless a rule places them elsewhere; then they go into the zone of their rule.
    void promoteNewVisibleItems();

private:
    static Task<> scanSeries(Scheduler& scheduler, WeakAnchor<VisibleItemEnforcer>::Ref self);
    // The items in the menu bar now (read once) with their rule keys, leftmost first, one per
    // key, and the windows of every item not ours.
    struct Current {
        std::vector<std::pair<std::string, MenuBarItem>> keyed;
        std::set<WindowID> windows;
    };
    Current currentItems() const;

    Dependencies deps_;
    ItemEnumerator enumerator_;
    std::set<std::string> knownKeys_;
    // Keys alone miss an application's second item, an untitled item and an application that
    // quit and came back between two scans (its key never went away); its windows are new.
    std::set<WindowID> knownWindows_;
    bool seeded_ = false;
    std::optional<Workspace::ObserverToken> observer_;
    TaskHandle scanTask_;
    WeakAnchor<VisibleItemEnforcer> anchor_{this};
};

} // namespace quillet
