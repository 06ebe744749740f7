#include "macos/triggers/NSEventPointerMonitor.h"

#import <AppKit/AppKit.h>

#include <map>

namespace quillet::macos {

struct NSEventPointerMonitor::Monitors {
    // A token for a monitor AppKit installed; none when it refused (nil).
    std::optional<Token> keep(id monitor) {
        if (monitor == nil) {
            return std::nullopt;
        }
        const Token token = nextToken++;
        byToken.emplace(token, monitor);
        return token;
    }

    Token nextToken = 1;
    std::map<Token, id> byToken;
};

NSEventPointerMonitor::NSEventPointerMonitor() : monitors_(std::make_unique<Monitors>()) {}

NSEventPointerMonitor::~NSEventPointerMonitor() {
    for (const auto& [token, monitor] : monitors_->byToken) {
        [NSEvent removeMonitor:monitor];
    }
}

// Each block keeps its own copy of the handler until its monitor is removed. The event itself is
// not passed on: the core reads what it needs afresh.
std::optional<PointerMonitor::Token>
NSEventPointerMonitor::addGlobalMonitor(std::uint64_t eventMask, std::function<void()> handler) {
    return monitors_->keep([NSEvent
        addGlobalMonitorForEventsMatchingMask:static_cast<NSEventMask>(eventMask)
                                      handler:^(NSEvent*) {
                                          handler();
                                      }]);
}

std::optional<PointerMonitor::Token>
NSEventPointerMonitor::addLocalMonitor(std::uint64_t eventMask, std::function<void()> handler) {
    return monitors_->keep([NSEvent
        addLocalMonitorForEventsMatchingMask:static_cast<NSEventMask>(eventMask)
                                     handler:^NSEvent*(NSEvent* event) {
                                         handler();
                                         // Unchanged, so that the application still receives it.
                                         return event;
                                     }]);
}

// The pointer's place is read from NSEvent's class, in AppKit's coordinates, as the toggle's
// frame is given: a global event's own location has no window to be relative to.
std::optional<PointerMonitor::Token>
NSEventPointerMonitor::addButtonMonitor(bool global,
                                        std::function<void(const ButtonChange&)> handler) {
    const NSEventMask mask = NSEventMaskLeftMouseDown | NSEventMaskLeftMouseUp |
                             NSEventMaskRightMouseDown | NSEventMaskRightMouseUp;
    void (^report)(NSEvent*) = ^(NSEvent* event) {
        const NSPoint where = [NSEvent mouseLocation];
        handler({.type = static_cast<std::uint32_t>([event type]),
                 .modifierFlags = static_cast<std::uint64_t>([event modifierFlags]),
                 .location = {where.x, where.y}});
    };
    if (global) {
        return monitors_->keep([NSEvent addGlobalMonitorForEventsMatchingMask:mask handler:report]);
    }
    return monitors_->keep([NSEvent addLocalMonitorForEventsMatchingMask:mask
                                                                 handler:^NSEvent*(NSEvent* event) {
                                                                     report(event);
                                                                     return event;
                                                                 }]);
}

void NSEventPointerMonitor::removeMonitor(Token token) {
    if (auto removed = monitors_->byToken.extract(token)) {
        [NSEvent removeMonitor:removed.mapped()];
    }
}

} // namespace quillet::macos
