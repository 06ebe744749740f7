#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::sim {

struct SimulatedWorld;

// What a scenario does and shows of keyboard navigation.
namespace NavigationSteps {

// The virtual key code of "left", "right", "up", "down", "return", "enter" or "escape".
std::optional<std::uint16_t> keyCode(std::string_view name);

// The user right-clicks the toggle and chooses "Keyboard Navigation".
void chooseKeyboardNavigation(SimulatedWorld& world);

// The lines of every panel on screen ("panel: …"), then the items opened since `openedSeen`
// ("opened: …"), which it moves on.
std::vector<std::string> describe(const SimulatedWorld& world, std::size_t& openedSeen);

} // namespace NavigationSteps

} // namespace quillet::sim
