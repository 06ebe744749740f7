#pragma once

#include "core/ports/FloatingPanel.hpp"

#include <memory>
#include <string>
#include <vector>

namespace quillet::sim {

// One of our panels on the simulated screen.
class SimPanel : public FloatingPanel {
public:
    // Where the panel is made; it stays there until moved.
    explicit SimPanel(Point madeAt) : origin(madeAt) {}

    void setContent(const PanelContent& newContent) override { content = newContent; }
    void setFrameOrigin(Point newOrigin) override { origin = newOrigin; }
    void makeKeyAndOrderFront() override;
    void orderOut() override { visible = key = false; }

    // The content drawn as text, one entry per line shown.
    std::vector<std::string> render() const;

    PanelContent content;
    Point origin;
    bool visible = false;
    bool key = false;

private:
    friend class SimulatedPanels;
    // Only one window is key at a time.
    std::vector<std::shared_ptr<SimPanel>>* siblings_ = nullptr;
};

// Our floating panels. A panel let go of while on screen stays there: AppKit may or may not
// close a window that loses its last reference, and the simulator takes the less kind answer,
// so that a leftover panel shows.
class SimulatedPanels : public PanelHost {
public:
    std::shared_ptr<FloatingPanel> createPanel(const PanelStyle& style) override;

    // The panel that is key and on screen, if any.
    const SimPanel* keyPanel() const;
    std::vector<const SimPanel*> visiblePanels() const;
    std::size_t createdCount() const { return panels_.size(); }

private:
    std::vector<std::shared_ptr<SimPanel>> panels_;
};

} // namespace quillet::sim
