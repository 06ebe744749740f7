#pragma once

#include "core/ports/KeyMonitor.hpp"

#include <memory>

namespace quillet::macos {

// NSEvent's local monitors for key events. AppKit calls their handlers on the main thread.
class NSEventKeyMonitor final : public KeyMonitor {
public:
    NSEventKeyMonitor();
    // Removes the monitors still installed: their handlers go with this object.
    ~NSEventKeyMonitor() override;
    NSEventKeyMonitor(const NSEventKeyMonitor&) = delete;
    NSEventKeyMonitor& operator=(const NSEventKeyMonitor&) = delete;

    std::optional<Token> addLocalMonitor(std::uint64_t eventMask, Handler handler) override;
    void removeMonitor(Token token) override;

private:
    // The monitor objects AppKit handed back, by token (Objective-C, so kept out of this header).
    struct Monitors;
    std::unique_ptr<Monitors> monitors_;
};

} // namespace quillet::macos
