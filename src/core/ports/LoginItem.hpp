#pragma once

#include <optional>
#include <string>

namespace quillet {

// The main application's login item (SMAppService.mainApp).
class LoginItem {
public:
    virtual ~LoginItem() = default;
    // The service's raw status value (1 = enabled).
    virtual int status() const = 0;
    // On failure, the error's localised description.
    virtual std::optional<std::string> registerService() = 0;
    virtual std::optional<std::string> unregisterService() = 0;
};

} // namespace quillet
