#pragma once

#include "core/ports/LogSink.hpp"
#include "core/ports/LoginItem.hpp"

namespace quillet {

// Switches Quillet's login item on or off. The platform keeps the state: nothing here remembers
// it, so whoever shows it asks again each time and shows the truth even after a failed switch.
class LaunchAtLogin {
public:
    // Both must outlive this object.
    LaunchAtLogin(LoginItem& loginItem, LogSink& log);

    // Registers or unregisters the main application, even when it already is in that state
    // (the platform decides what that means); a failure is only logged.
    void setEnabled(bool enabled);
    // Asks the platform; only its "enabled" status counts as on.
    bool isEnabled() const;

private:
    static constexpr int kStatusEnabled = 1;

    LoginItem& loginItem_;
    LogSink& log_;
};

} // namespace quillet
