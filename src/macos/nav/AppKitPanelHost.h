#pragma once

#include "core/ports/FloatingPanel.hpp"

namespace quillet::macos {

// Floating panels (NSPanel) that draw a PanelContent: a translucent rounded background and a
// centred vertical stack of labels. Main thread only.
class AppKitPanelHost final : public PanelHost {
public:
    std::shared_ptr<FloatingPanel> createPanel(const PanelStyle& style) override;
};

} // namespace quillet::macos
