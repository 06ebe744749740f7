#pragma once

#include "core/ports/PointerMonitor.hpp"
#include "sim/SimulatedMac.hpp"

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
    void removeMonitor(Token token) override;

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

    SimulatedMac& mac_;
    std::map<Token, Monitor> monitors_;
    Token nextToken_ = 1;
    bool overOwnWindow_ = false;
    bool refuse_ = false;
};

} // namespace quillet::sim
