#import "macos/app/AppKitAlertPresenter.h"

#import "macos/support/Strings.h"

#import <AppKit/AppKit.h>

namespace quillet::macos {

void AppKitAlertPresenter::present(const Alert& alert, std::function<void(std::size_t)> chosen) {
    // On the next turn of the main loop: the modal loop runs other main-queue work, which must
    // not find the caller half-way through its own.
    Alert shown = alert;
    dispatch_async(dispatch_get_main_queue(), ^{
        NSAlert* panel = [[NSAlert alloc] init];
        [panel setMessageText:nonNilString(shown.messageText)];
        [panel setInformativeText:nonNilString(shown.informativeText)];
        for (const std::string& title : shown.buttons) {
            [panel addButtonWithTitle:nonNilString(title)];
        }
        // An agent app is never frontmost on its own: without this the alert opens behind the
        // frontmost app's windows.
        if (@available(macOS 14.0, *)) {
            [NSApp activate];
        } else {
            [NSApp activateIgnoringOtherApps:YES];
        }
        const NSModalResponse response = [panel runModal];
        if (chosen && response >= NSAlertFirstButtonReturn) {
            chosen(static_cast<std::size_t>(response - NSAlertFirstButtonReturn));
        }
    });
}

} // namespace quillet::macos
