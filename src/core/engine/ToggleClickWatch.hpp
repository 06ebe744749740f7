#pragma once

#include "core/ports/PointerMonitor.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/ports/StatusBarHost.hpp"
#include "core/support/WeakAnchor.hpp"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace quillet {

// Makes sure every click on the toggle reaches it once, as the user made it. On the menu bar
// that hosts status items in a system process, the button's action is not sent for a right
// click, and an Option- or Control-click arrives as a plain click; event monitors still see
// the real events. So the watch pairs what the monitors saw on the toggle with what the button
// sends: a click the button reports is passed on with the type and modifier flags the monitors
// saw, and one it never reports is passed on by the watch itself after a short wait. Where the
// button reports everything (the bar with a window per item), nothing changes.
class ToggleClickWatch {
public:
    struct Dependencies {
        PointerMonitor& pointer;
        Scheduler& scheduler;
        // Whether a place (AppKit coordinates) is on the toggle.
        std::function<bool(Point)> isOnToggle;
        // True while our own synthetic drags run: the buttons going down and up are ours.
        std::function<bool()> movingItems;
        // Receives each click once.
        std::function<void(std::optional<ButtonEvent>)> deliver;
    };

    // How long a click the monitors saw waits for the button's own report.
    static constexpr Duration kButtonReportWait = std::chrono::milliseconds(150);
    // A report this soon after the watch passed a click on by itself is that click, late.
    static constexpr Duration kLateReport = std::chrono::milliseconds(600);

    explicit ToggleClickWatch(Dependencies dependencies);
    ~ToggleClickWatch();
    ToggleClickWatch(const ToggleClickWatch&) = delete;
    ToggleClickWatch& operator=(const ToggleClickWatch&) = delete;

    // The button's action, with the application's current event.
    void buttonSent(std::optional<ButtonEvent> event);

private:
    void buttonChanged(const PointerMonitor::ButtonChange& change);
    void deliverUnreported(unsigned click);

    Dependencies deps_;
    std::vector<PointerMonitor::Token> monitors_;
    // The button that went down on the toggle, while it is held.
    std::optional<PointerMonitor::ButtonChange> pressed_;
    // A click the monitors saw on the toggle that the button has not reported yet.
    std::optional<ButtonEvent> unreported_;
    // Counts clicks, so that a wait for an earlier one cannot deliver a later one.
    unsigned clicks_ = 0;
    // When the watch passed on clicks the button had not reported, oldest first: a report that
    // comes late belongs to the oldest of them.
    std::deque<Duration> deliveredUnreported_;
    WeakAnchor<ToggleClickWatch> anchor_{this};
};

} // namespace quillet
