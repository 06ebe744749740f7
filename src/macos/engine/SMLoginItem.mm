#import "macos/engine/SMLoginItem.h"

#import "macos/support/Strings.h"

#import <ServiceManagement/ServiceManagement.h>

namespace quillet::macos {

namespace {

// Nothing on success; otherwise the error's localised description.
std::optional<std::string> failureOf(BOOL succeeded, NSError* error) {
    if (succeeded) {
        return std::nullopt;
    }
    return utf8String([error localizedDescription]).value_or(std::string());
}

} // namespace

int SMLoginItem::status() const {
    return static_cast<int>([[SMAppService mainAppService] status]);
}

std::optional<std::string> SMLoginItem::registerService() {
    NSError* error = nil;
    const BOOL succeeded = [[SMAppService mainAppService] registerAndReturnError:&error];
    return failureOf(succeeded, error);
}

std::optional<std::string> SMLoginItem::unregisterService() {
    NSError* error = nil;
    const BOOL succeeded = [[SMAppService mainAppService] unregisterAndReturnError:&error];
    return failureOf(succeeded, error);
}

} // namespace quillet::macos
