#include "macos/app/AppKitApplicationShell.h"

#import <AppKit/AppKit.h>

namespace quillet::macos {

namespace {

NSApplicationActivationPolicy activationPolicy(ActivationPolicy policy) {
    switch (policy) {
    case ActivationPolicy::regular:
        return NSApplicationActivationPolicyRegular;
    case ActivationPolicy::accessory:
        return NSApplicationActivationPolicyAccessory;
    case ActivationPolicy::prohibited:
        break;
    }
    return NSApplicationActivationPolicyProhibited;
}

} // namespace

void AppKitApplicationShell::setActivationPolicy(ActivationPolicy policy) {
    [NSApp setActivationPolicy:activationPolicy(policy)];
}

// Soft-deprecated since macOS 14 without a warning; its successor `activate` only asks politely,
// and navigation needs the keys now.
void AppKitApplicationShell::activateIgnoringOtherApps() {
    [NSApp activateIgnoringOtherApps:YES];
}

void AppKitApplicationShell::terminate() {
    [NSApp terminate:nil];
}

} // namespace quillet::macos
