#import "macos/app/AppDelegate.h"

#include "core/app/AppDelegate.hpp"
#include "core/app/Services.hpp"
#include "macos/app/Platform.h"

#include <cassert>
#include <memory>

@implementation AppDelegate {
    // Built at the end of launching and kept for the life of the process, as is this delegate.
    std::unique_ptr<quillet::Services> _services;
    std::unique_ptr<quillet::AppDelegate> _delegate;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    assert([NSThread isMainThread] && "AppKit announces the launch on the main thread");
    if (_delegate != nullptr) {
        return;
    }
    _services = std::make_unique<quillet::Services>(quillet::macos::Platform::shared().ports());
    // The settings window and keyboard navigation are not in the app yet, so nothing offers
    // their hooks.
    _delegate = std::make_unique<quillet::AppDelegate>(*_services, quillet::AppDelegate::Hooks{});
    _delegate->applicationDidFinishLaunching();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    (void)notification;
    assert([NSThread isMainThread] && "AppKit announces the quit on the main thread");
    if (_delegate != nullptr) {
        _delegate->applicationWillTerminate();
    }
}

@end
