#pragma once

#include "core/ports/Geometry.hpp"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

// One slot of the hosted menu bar as the host's accessibility tree describes it.
struct HostedItem {
    // The process that made the item (the owner of the slot's child element).
    Pid owner = 0;
    // "AXIdentifier" ("com.apple.menuextra.clock", …); empty when the item has none.
    std::string identifier;
    // "AXPosition" and "AXSize" as the host reports them; nullopt when it gives none, as it does
    // for items in its overflow menu.
    std::optional<Rect> frame;
    // Which of the host's windows (one per display, in the host's order) holds the slot.
    std::size_t displayIndex = 0;
    friend bool operator==(const HostedItem&, const HostedItem&) = default;
};

// The system process that hosts the menu bar on macOS 27 ("com.apple.MenuBarAgent"), read through
// Accessibility: its windows, their children, each child's owning process, identifier and frame.
class MenuBarHostReader {
public:
    virtual ~MenuBarHostReader() = default;

    // Every item slot, window by window in the host's order; nullopt when the host does not run,
    // this process is not trusted, or the host leaves a message unanswered for
    // `messagingTimeout` (each element messaged gets that timeout).
    virtual std::optional<std::vector<HostedItem>>
    hostedItems(std::chrono::milliseconds messagingTimeout) const = 0;
};

} // namespace quillet
