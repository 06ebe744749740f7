#include "core/engine/LaunchAtLogin.hpp"

#include <string>

namespace quillet {

LaunchAtLogin::LaunchAtLogin(LoginItem& loginItem, LogSink& log)
    : loginItem_(loginItem), log_(log) {}

void LaunchAtLogin::setEnabled(bool enabled) {
    const auto failure = enabled ? loginItem_.registerService() : loginItem_.unregisterService();
    if (failure) {
        log_.log("[Quillet] LaunchAtLogin toggle failed: " + *failure);
    }
}

bool LaunchAtLogin::isEnabled() const {
    return loginItem_.status() == kStatusEnabled;
}

} // namespace quillet
