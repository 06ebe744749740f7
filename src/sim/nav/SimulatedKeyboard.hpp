#pragma once

#include "core/ports/KeyMonitor.hpp"

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace quillet::sim {

class VirtualScheduler;

// The keyboard of the simulated Mac and NSEvent's local key monitors. A key, typed or posted at
// the HID event tap, goes to the active application; our local monitors see it, on a later turn
// of the main loop, in the order they were installed, until one swallows it. Known: keys go to
// the active application only. Assumed, as the stricter of the plausible answers: an active
// application without a key window gets none either, so we receive keys only while active with
// a panel made key. Without a scheduler, keys are delivered at once.
class SimulatedKeyboard : public KeyMonitor {
public:
    void setScheduler(VirtualScheduler* scheduler) { scheduler_ = scheduler; }
    // Whether our application is active with a key window now; unset, it never is.
    void setFocus(std::function<bool()> ownKeyWindowIsActive) {
        focus_ = std::move(ownKeyWindowIsActive);
    }

    std::optional<Token> addLocalMonitor(std::uint64_t eventMask, Handler handler) override;
    void removeMonitor(Token token) override;

    // A key event enters the system.
    void press(const KeyEvent& event);
    // A whole key press: down, then up.
    void type(std::uint16_t keyCode);

    std::size_t monitorCount() const { return monitors_.size(); }
    // The key-downs that reached our application and that no monitor swallowed.
    const std::vector<KeyEvent>& passedOn() const { return passedOn_; }

private:
    struct Monitor {
        std::uint64_t mask;
        Handler handler;
    };
    void deliver(const KeyEvent& event);

    VirtualScheduler* scheduler_ = nullptr;
    std::function<bool()> focus_;
    std::map<Token, Monitor> monitors_;
    Token nextToken_ = 1;
    std::vector<KeyEvent> passedOn_;
};

} // namespace quillet::sim
