// The hosted menu bar of macOS 27 as the rest of the system shows it: the window list, the host
// process's accessibility tree, and Command-drags. The layout itself is MenuBarModel+Hosted.cpp,
// which also says what is known and what is assumed of it.
//
// Known (the macOS 27 reference gives how sure each one is):
//  - The window list holds the bar itself, one full-width window at layer 24 per display owned by
//    the window server, and no window per item (high).
//  - com.apple.MenuBarAgent publishes one accessibility window per display and one slot per item;
//    the slot's element belongs to the process that made the item; Apple's items carry
//    "com.apple.menuextra.*" identifiers and no title (medium).
//  - Drags synthesized at an item's slot take the cursor and leave the item where it was; a
//    user's own Command-drag still moves it (medium/low).
//  - Frames can be missing for a moment after launch, and lag after a change (medium).
// Assumed:
//  - Other applications' items, ours included, carry no identifier.
//  - A lagging read gives each slot the frame of the previous read once after it changed, and no
//    frame at all at its first read (again after it left the tree and came back); an item
//    dropped from a display is not in its tree.
//  - The host answers within the messaging timeout unless the test hangs it (setApplicationHung
//    with kMenuBarHostPID).

#include "sim/SimulatedMac.hpp"

#include <algorithm>
#include <cctype>

namespace quillet::sim {

namespace {

constexpr Pid kWindowServerPID = 153;
constexpr WindowID kFirstBarWindow = 100;

// The identifier the host gives a system item: "com.apple.menuextra." and the item's name in
// lower case, Control Center's under its own name.
std::string menuExtraIdentifier(const std::string& name) {
    std::string suffix = name == "BentoBox" ? "controlcenter" : name;
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return "com.apple.menuextra." + suffix;
}

} // namespace

void SimulatedMac::setMenuBarKind(BarKind kind) {
    const bool hosted = kind == BarKind::hosted;
    bar_->setHosted(hosted);
    if (hosted) {
        bar_->setFramesLag(true);
        running_[std::string(kMenuBarHostBundleID)] = {kMenuBarHostPID};
    } else {
        running_.erase(std::string(kMenuBarHostBundleID));
    }
}

BarKind SimulatedMac::menuBarKind() const {
    return bar_->isHosted() ? BarKind::hosted : BarKind::perItemWindows;
}

void SimulatedMac::setRecordedHostedItems(std::vector<HostedItem> items) {
    recordedHostedItems_ = std::move(items);
}

std::vector<SimulatedMac::Window> SimulatedMac::hostedBarWindows() const {
    std::vector<Window> bars;
    for (std::size_t i = 0; i < displays_.size(); ++i) {
        const Rect& display = displays_[i];
        Window bar = statusItemWindow(
            kFirstBarWindow + static_cast<WindowID>(i),
            makeRect(display.minX(), display.minY(), display.width(), menuBarThickness_),
            kWindowServerPID, "Window Server", "Menubar");
        bar[WindowKey::layer] = {std::int64_t{24}};
        bars.push_back(std::move(bar));
    }
    return bars;
}

HostedItem SimulatedMac::describeHosted(const MenuBarModel::Item& item, std::optional<Rect> frame,
                                        std::size_t index) const {
    HostedItem hosted;
    hosted.owner = item.kind == MenuBarModel::Kind::system ? bar_->controlCenterPID() : item.pid;
    if (item.kind == MenuBarModel::Kind::system) {
        hosted.identifier = menuExtraIdentifier(item.title);
    }
    hosted.displayIndex = index;
    if (frame && hostedFramesShifted_) {
        frame->origin.x += mainDisplayBounds().minX() - displays_[index].minX();
        frame->origin.y += mainDisplayBounds().minY() - displays_[index].minY();
    }
    hosted.frame = frame;
    if (bar_->framesLag()) {
        auto [previous, firstRead] = hostedDescribed_.try_emplace({index, item.window}, frame);
        hosted.frame = firstRead ? std::nullopt : std::exchange(previous->second, frame);
    }
    return hosted;
}

std::optional<std::vector<HostedItem>>
SimulatedMac::hostedItems(std::chrono::milliseconds messagingTimeout) const {
    if (!accessibility_ || runningProcesses(std::string(kMenuBarHostBundleID)).empty()) {
        return std::nullopt;
    }
    if (hungApplications_.contains(kMenuBarHostPID)) {
        waitForAnswer(messagingTimeout);
        return std::nullopt;
    }
    std::vector<HostedItem> items = recordedHostedItems_;
    if (!bar_->isHosted()) {
        return items;
    }
    std::set<std::pair<std::size_t, WindowID>> listed;
    for (std::size_t index = 0; index < displays_.size(); ++index) {
        for (const auto& slot : bar_->hostedLayout(displays_[index])) {
            if (!slot.dropped) {
                items.push_back(describeHosted(*bar_->item(slot.window), slot.frame, index));
                listed.insert({index, slot.window});
            }
        }
    }
    // A slot that left the tree starts again without a frame when it comes back.
    std::erase_if(hostedDescribed_,
                  [&](const auto& entry) { return !listed.contains(entry.first); });
    return items;
}

bool SimulatedMac::userCommandDrags(WindowID item, double x) {
    // Only what the bar shows can be grabbed.
    const auto frame = bar_->shownFrame(item);
    if (!frame || !bar_->lift(item, frame->center())) {
        return false;
    }
    bar_->drop(x);
    return true;
}

} // namespace quillet::sim
