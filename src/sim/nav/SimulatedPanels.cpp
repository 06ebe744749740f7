#include "sim/nav/SimulatedPanels.hpp"

namespace quillet::sim {

namespace {

// At most `limit` lines of `text` (0: all), the last one shown ending in an ellipsis when more
// was cut. Widths are not measured: the simulator has no fonts.
std::vector<std::string> linesOf(const std::string& text, int limit) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find('\n', start);
        if (limit > 0 && static_cast<int>(lines.size()) == limit) {
            lines.back() += "…";
            return lines;
        }
        lines.push_back(text.substr(start, end == std::string::npos ? end : end - start));
        if (end == std::string::npos) {
            return lines;
        }
        start = end + 1;
    }
}

} // namespace

void SimPanel::makeKeyAndOrderFront() {
    for (const auto& other : *siblings_) {
        other->key = false;
    }
    visible = key = true;
}

std::vector<std::string> SimPanel::render() const {
    std::vector<std::string> shown;
    for (const PanelText& line : content.lines) {
        for (auto& part : linesOf(line.text, line.lineLimit)) {
            shown.push_back(std::move(part));
        }
    }
    return shown;
}

std::shared_ptr<FloatingPanel> SimulatedPanels::createPanel(const PanelStyle& style) {
    auto panel = std::make_shared<SimPanel>(style.contentRect.origin);
    panel->siblings_ = &panels_;
    panels_.push_back(panel);
    return panel;
}

const SimPanel* SimulatedPanels::keyPanel() const {
    for (const auto& panel : panels_) {
        if (panel->visible && panel->key) {
            return panel.get();
        }
    }
    return nullptr;
}

std::vector<const SimPanel*> SimulatedPanels::visiblePanels() const {
    std::vector<const SimPanel*> visible;
    for (const auto& panel : panels_) {
        if (panel->visible) {
            visible.push_back(panel.get());
        }
    }
    return visible;
}

} // namespace quillet::sim
