#import "macos/app/AppDelegate.h"

#include "core/app/AppDelegate.hpp"
#include "core/app/Services.hpp"
#include "core/nav/KeyboardNavController.hpp"
#include "core/settings/SettingsWindowController.hpp"
#include "macos/app/Platform.h"

#include <cassert>
#include <memory>
#include <utility>

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
    quillet::AppDelegate::Hooks hooks;
    _services->keyboardNav().offerTo(hooks);
    _services->settingsWindow().offerTo(hooks);
    _delegate = std::make_unique<quillet::AppDelegate>(*_services, std::move(hooks));
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
