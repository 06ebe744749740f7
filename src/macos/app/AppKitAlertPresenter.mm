#import "macos/app/AppKitAlertPresenter.h"

#import "macos/support/Strings.h"

#import <AppKit/AppKit.h>

namespace quillet::macos {

void AppKitAlertPresenter::present(const Alert& alert) {
    NSAlert* panel = [[NSAlert alloc] init];
    [panel setMessageText:nonNilString(alert.messageText)];
    [panel setInformativeText:nonNilString(alert.informativeText)];
    for (const std::string& title : alert.buttons) {
        [panel addButtonWithTitle:nonNilString(title)];
    }
    // An agent app is never frontmost on its own: without this the alert opens behind the
    // frontmost app's windows.
    if (@available(macOS 14.0, *)) {
        [NSApp activate];
    } else {
        [NSApp activateIgnoringOtherApps:YES];
    }
    [panel runModal];
}

} // namespace quillet::macos
