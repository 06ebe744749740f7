#pragma once

#include "core/ports/LoginItem.hpp"

namespace quillet::macos {

// The main application's login item (SMAppService.mainAppService). Every call asks the service
// afresh; the service, not Quillet, keeps the state.
class SMLoginItem final : public LoginItem {
public:
    int status() const override;
    std::optional<std::string> registerService() override;
    std::optional<std::string> unregisterService() override;
};

} // namespace quillet::macos
