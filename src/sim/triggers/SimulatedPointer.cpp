#include "sim/triggers/SimulatedPointer.hpp"

#include "sim/VirtualScheduler.hpp"

#include <vector>

namespace quillet::sim {

SimulatedPointer::SimulatedPointer(SimulatedMac& mac) : mac_(mac) {
    mac_.setPostedEventHandler([this](const MouseEvent& event) {
        if (event.type == MouseEventType::mouseMoved) {
            deliverMove();
        } else {
            // Our drags' buttons, seen where the pointer is when the monitor runs.
            deliverButton(true, {static_cast<std::uint32_t>(event.type), event.flags,
                                 mac_.pointerLocation()});
        }
    });
}

SimulatedPointer::~SimulatedPointer() {
    mac_.setPostedEventHandler(nullptr);
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

std::optional<PointerMonitor::Token>
SimulatedPointer::addButtonMonitor(bool global, std::function<void(const ButtonChange&)> handler) {
    if (refuse_) {
        return std::nullopt;
    }
    buttonMonitors_.emplace(nextToken_, std::pair(global, std::move(handler)));
    return nextToken_++;
}

void SimulatedPointer::removeMonitor(Token token) {
    monitors_.erase(token);
    buttonMonitors_.erase(token);
}

void SimulatedPointer::deliverButton(bool global, const ButtonChange& change) {
    std::vector<std::function<void(const ButtonChange&)>> handlers;
    for (const auto& [token, monitor] : buttonMonitors_) {
        if (monitor.first == global) {
            handlers.push_back(monitor.second);
        }
    }
    for (const auto& handler : handlers) {
        handler(change);
    }
}

void SimulatedPointer::clickOwnItem(const std::shared_ptr<SimStatusItem>& item, MouseEventType down,
                                    std::uint64_t flags) {
    // Where the item shows, not where AppKit says it is: on the hosted bar that is a placeholder.
    const auto shown = mac_.shownItemFrame(item->window());
    const Point middle = shown ? mac_.menuBar().mainDisplayFrameInAppKit(*shown).center() : Point{};
    mac_.setPointerLocation(middle);
    const auto downType = static_cast<std::uint32_t>(down);
    const ButtonEvent release{downType + 1, flags};
    // The system takes a Command-click for the start of the user moving the item: the button is
    // never told, the monitors of other applications see it.
    const bool movingTheItem = (flags & EventFlags::command) != 0;
    if (!movingTheItem && reports_ == ButtonReports::everyClick) {
        deliverButton(false, {downType, flags, middle});
        item->click(release);
        return;
    }
    deliverButton(true, {downType, flags, middle});
    deliverButton(true, {release.type, flags, middle});
    if (movingTheItem || down != MouseEventType::leftMouseDown) {
        return;
    }
    auto report = [target = std::weak_ptr(item)] {
        if (auto button = target.lock()) {
            button->click(ButtonEvent{static_cast<std::uint32_t>(MouseEventType::leftMouseUp), 0});
        }
    };
    if (reportDelay_ == Duration::zero()) {
        report();
    } else {
        mac_.scheduler().postAfter(reportDelay_, report);
    }
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
