#include "sim/triggers/SimulatedPointer.hpp"

#include <vector>

namespace quillet::sim {

SimulatedPointer::SimulatedPointer(SimulatedMac& mac) : mac_(mac) {
    mac_.setPostedMoveHandler([this] { deliverMove(); });
}

SimulatedPointer::~SimulatedPointer() {
    mac_.setPostedMoveHandler(nullptr);
}

std::optional<PointerMonitor::Token> SimulatedPointer::add(bool global, std::uint64_t mask,
                                                           std::function<void()> handler) {
    if (refuse_) {
        return std::nullopt;
    }
    monitors_.emplace(nextToken_, Monitor{global, mask, std::move(handler)});
    return nextToken_++;
}

std::optional<PointerMonitor::Token>
SimulatedPointer::addGlobalMonitor(std::uint64_t eventMask, std::function<void()> handler) {
    return add(true, eventMask, std::move(handler));
}

std::optional<PointerMonitor::Token>
SimulatedPointer::addLocalMonitor(std::uint64_t eventMask, std::function<void()> handler) {
    return add(false, eventMask, std::move(handler));
}

void SimulatedPointer::removeMonitor(Token token) {
    monitors_.erase(token);
}

void SimulatedPointer::moveTo(Point location) {
    mac_.setPointerLocation(location);
    deliverMove();
}

void SimulatedPointer::deliverMove() {
    std::vector<std::function<void()>> handlers;
    for (const auto& [token, monitor] : monitors_) {
        if (monitor.global != overOwnWindow_ && (monitor.mask & kMouseMovedEventMask) != 0) {
            handlers.push_back(monitor.handler);
        }
    }
    for (const auto& handler : handlers) {
        handler();
    }
}

} // namespace quillet::sim
