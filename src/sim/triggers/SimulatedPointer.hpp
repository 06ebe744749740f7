#pragma once

#include "core/ports/InputInjector.hpp"
#include "core/ports/PointerMonitor.hpp"
#include "core/ports/Scheduler.hpp"
#include "sim/SimulatedMac.hpp"
#include "sim/engine/SimStatusItem.hpp"

#include <map>

namespace quillet::sim {

// The pointer moving over the simulated Mac, and NSEvent's monitors that see it: global ones
// while another application is under the pointer, local ones while our own window is. Mouse-moved
// events posted through the Mac's input (our own drags) reach them too.
class SimulatedPointer : public PointerMonitor {
public:
    explicit SimulatedPointer(SimulatedMac& mac);
    ~SimulatedPointer() override;
    SimulatedPointer(const SimulatedPointer&) = delete;
    SimulatedPointer& operator=(const SimulatedPointer&) = delete;

    std::optional<Token> addGlobalMonitor(std::uint64_t eventMask,
                                          std::function<void()> handler) override;
    std::optional<Token> addLocalMonitor(std::uint64_t eventMask,
                                         std::function<void()> handler) override;
    std::optional<Token>
    addButtonMonitor(bool global, std::function<void(const ButtonChange&)> handler) override;
    void removeMonitor(Token token) override;

    // How a status item's button tells its action about a user's click. Known: on the bar with
    // a window per item every click is reported as it happened, from within the button's own
    // mouse tracking, so local monitors see the button go down but never up. Reported of the
    // hosted bar (betas, medium confidence): right clicks never reach the action and
    // Option-clicks arrive as plain clicks. Assumed there: every modifier is lost, the clicks go
    // to the host process first (only global monitors see them), and the action is sent some
    // time after the release (`delay`; unknown, so tests try several).
    enum class ButtonReports { everyClick, leftClicksPlain };
    void setButtonReports(ButtonReports reports, Duration delay = Duration::zero()) {
        reports_ = reports;
        reportDelay_ = delay;
    }
    // The user clicks our status item `item` in its middle with the button that `down` presses,
    // holding `flags`.
    void clickOwnItem(const std::shared_ptr<SimStatusItem>& item, MouseEventType down,
                      std::uint64_t flags = 0);

    // Moves the pointer (AppKit coordinates) and delivers a mouse-moved event.
    void moveTo(Point location);
    void setOverOwnWindow(bool overOwnWindow) { overOwnWindow_ = overOwnWindow; }
    void refuseMonitors(bool refuse) { refuse_ = refuse; }
    std::size_t monitorCount() const { return monitors_.size(); }

private:
    struct Monitor {
        bool global;
        std::uint64_t mask;
        std::function<void()> handler;
    };
    std::optional<Token> add(bool global, std::uint64_t mask, std::function<void()> handler);
    void deliverMove();
    void deliverButton(bool global, const ButtonChange& change);

    SimulatedMac& mac_;
    std::map<Token, Monitor> monitors_;
    std::map<Token, std::pair<bool, std::function<void(const ButtonChange&)>>> buttonMonitors_;
    ButtonReports reports_ = ButtonReports::everyClick;
    Duration reportDelay_ = Duration::zero();
    Token nextToken_ = 1;
    bool overOwnWindow_ = false;
    bool refuse_ = false;
};

} // namespace quillet::sim
