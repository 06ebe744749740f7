#include "macos/nav/NSEventKeyMonitor.h"

#import <AppKit/AppKit.h>

#include <map>

namespace quillet::macos {

struct NSEventKeyMonitor::Monitors {
    Token nextToken = 1;
    std::map<Token, id> byToken;
};

NSEventKeyMonitor::NSEventKeyMonitor() : monitors_(std::make_unique<Monitors>()) {}

NSEventKeyMonitor::~NSEventKeyMonitor() {
    for (const auto& [token, monitor] : monitors_->byToken) {
        [NSEvent removeMonitor:monitor];
    }
}

// The block keeps its own copy of the handler until its monitor is removed.
std::optional<KeyMonitor::Token> NSEventKeyMonitor::addLocalMonitor(std::uint64_t eventMask,
                                                                    Handler handler) {
    id monitor = [NSEvent
        addLocalMonitorForEventsMatchingMask:static_cast<NSEventMask>(eventMask)
                                     handler:^NSEvent*(NSEvent* event) {
                                         const KeyEvent key{event.keyCode,
                                                            event.type == NSEventTypeKeyDown};
                                         // nil swallows the event.
                                         return handler(key) ? nil : event;
                                     }];
    if (monitor == nil) {
        return std::nullopt;
    }
    const Token token = monitors_->nextToken++;
    monitors_->byToken.emplace(token, monitor);
    return token;
}

void NSEventKeyMonitor::removeMonitor(Token token) {
    if (auto removed = monitors_->byToken.extract(token)) {
        [NSEvent removeMonitor:removed.mapped()];
    }
}

} // namespace quillet::macos
