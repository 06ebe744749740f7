#include "sim/nav/NavigationSteps.hpp"

#include "sim/app/SimulatedWorld.hpp"

#include <map>

namespace quillet::sim::NavigationSteps {

namespace {

constexpr ButtonEvent kRightMouseUp{4, 0};

} // namespace

std::optional<std::uint16_t> keyCode(std::string_view name) {
    static const std::map<std::string_view, std::uint16_t> codes{
        {"left", 123},  {"right", 124}, {"up", 126},    {"down", 125},
        {"return", 36}, {"enter", 76},  {"escape", 53},
    };
    auto found = codes.find(name);
    return found == codes.end() ? std::nullopt : std::optional(found->second);
}

void chooseKeyboardNavigation(SimulatedWorld& world) {
    if (auto toggle = world.mac.ownStatusItem("quillet.toggle")) {
        toggle->click(kRightMouseUp);
        toggle->chooseMenuEntry("Keyboard Navigation");
    }
}

std::vector<std::string> describe(const SimulatedWorld& world, std::size_t& openedSeen) {
    std::vector<std::string> lines;
    for (const SimPanel* panel : world.panels.visiblePanels()) {
        for (const std::string& line : panel->render()) {
            lines.push_back("panel: " + line);
        }
    }
    const auto& opened = world.mac.openedItems();
    for (; openedSeen < opened.size(); ++openedSeen) {
        const auto* item = world.mac.menuBar().item(opened[openedSeen]);
        const bool system = item && item->kind == MenuBarModel::Kind::system;
        lines.push_back("opened: " + (item ? (system ? item->title : item->appName) : "?"));
    }
    return lines;
}

} // namespace quillet::sim::NavigationSteps
