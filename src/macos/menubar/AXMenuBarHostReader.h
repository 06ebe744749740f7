#pragma once

#include "core/ports/MenuBarHostReader.hpp"

namespace quillet::macos {

// The accessibility tree of the process that hosts the menu bar on macOS 27
// (com.apple.MenuBarAgent), passed on slot by slot as the host reports it.
class AXMenuBarHostReader final : public MenuBarHostReader {
public:
    std::optional<std::vector<HostedItem>>
    hostedItems(std::chrono::milliseconds messagingTimeout) const override;
};

} // namespace quillet::macos
