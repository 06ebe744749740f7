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

} // namespace quillet::macos
