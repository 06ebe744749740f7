#pragma once

#include "core/ports/AlertPresenter.hpp"

namespace quillet::macos {

// Shows the core's alerts as application-modal NSAlerts.
class AppKitAlertPresenter final : public AlertPresenter {
public:
    void present(const Alert& alert, std::function<void(std::size_t)> chosen) override;
};

} // namespace quillet::macos
