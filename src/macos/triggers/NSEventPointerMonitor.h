#pragma once

#include "core/ports/PointerMonitor.hpp"

#include <memory>

namespace quillet::macos {

// NSEvent's global and local event monitors, for the event mask the core asks for. AppKit calls
// their handlers on the main thread.
class NSEventPointerMonitor final : public PointerMonitor {
public:
    NSEventPointerMonitor();
    // Removes the monitors still installed: their handlers go with this object.
    ~NSEventPointerMonitor() override;
    NSEventPointerMonitor(const NSEventPointerMonitor&) = delete;
    NSEventPointerMonitor& operator=(const NSEventPointerMonitor&) = delete;

    std::optional<Token> addGlobalMonitor(std::uint64_t eventMask,
                                          std::function<void()> handler) override;
    std::optional<Token> addLocalMonitor(std::uint64_t eventMask,
                                         std::function<void()> handler) override;
    std::optional<Token>
    addButtonMonitor(bool global, std::function<void(const ButtonChange&)> handler) override;
    void removeMonitor(Token token) override;

private:
    // The monitor objects AppKit handed back, by token (Objective-C, so kept out of this header).
    struct Monitors;
    std::unique_ptr<Monitors> monitors_;
};

} // namespace quillet::macos
