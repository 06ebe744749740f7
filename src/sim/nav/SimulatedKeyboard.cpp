#include "sim/nav/SimulatedKeyboard.hpp"

#include "sim/VirtualScheduler.hpp"

namespace quillet::sim {

namespace {

// NSEvent's event types of a key going down and coming up.
constexpr int kKeyDownType = 10;
constexpr int kKeyUpType = 11;

std::uint64_t maskOf(const KeyEvent& event) {
    return std::uint64_t{1} << (event.keyDown ? kKeyDownType : kKeyUpType);
}

} // namespace

std::optional<KeyMonitor::Token> SimulatedKeyboard::addLocalMonitor(std::uint64_t eventMask,
                                                                    Handler handler) {
    monitors_.emplace(nextToken_, Monitor{eventMask, std::move(handler)});
    return nextToken_++;
}

void SimulatedKeyboard::removeMonitor(Token token) {
    monitors_.erase(token);
}

void SimulatedKeyboard::press(const KeyEvent& event) {
    // The window server routes the key when it arrives; the application handles it later.
    if (!focus_ || !focus_()) {
        return;
    }
    if (scheduler_ == nullptr) {
        deliver(event);
        return;
    }
    scheduler_->post([this, event] { deliver(event); });
}

void SimulatedKeyboard::type(std::uint16_t keyCode) {
    press({keyCode, true});
    press({keyCode, false});
}

void SimulatedKeyboard::deliver(const KeyEvent& event) {
    std::vector<Token> tokens;
    for (const auto& [token, monitor] : monitors_) {
        tokens.push_back(token);
    }
    for (Token token : tokens) {
        // A handler may remove monitors, its own included.
        auto monitor = monitors_.find(token);
        if (monitor == monitors_.end() || (monitor->second.mask & maskOf(event)) == 0) {
            continue;
        }
        const Handler handler = monitor->second.handler;
        if (handler(event)) {
            return;
        }
    }
    if (event.keyDown) {
        passedOn_.push_back(event);
    }
}

} // namespace quillet::sim
