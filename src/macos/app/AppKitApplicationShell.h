#pragma once

#include "core/ports/ApplicationShell.hpp"

namespace quillet::macos {

// The shared application object (NSApp), which main creates before anything else. Main thread
// only.
class AppKitApplicationShell final : public ApplicationShell {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    void activateIgnoringOtherApps() override;
    void terminate() override;
};

} // namespace quillet::macos
