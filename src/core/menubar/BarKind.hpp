#pragma once

#include "core/ports/Geometry.hpp"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillet {

class WindowListSource;

// How the system hosts status items. Up to macOS 26 each item is a window of its own that the
// window list shows; macOS 27 composes the bar in one system process and publishes it only
// through Accessibility. Quillet decides from what it sees, the version only breaking the tie.
enum class BarKind { perItemWindows, hosted, unknown };

// The first macOS that hosts the bar in one process.
inline constexpr int kFirstHostedMacOS = 27;

// The system process that hosts the bar on macOS 27.
inline constexpr std::string_view kMenuBarHostBundleID = "com.apple.MenuBarAgent";

// What Quillet can observe about the bar it runs on.
struct BarObservation {
    int osMajorVersion = 0;
    bool menuBarHostRunning = false;
    // The frames of the windows that the window list shows for our own status items.
    std::vector<Rect> ownItemWindowFrames;
    // How many status items we have made, whether or not the list shows them.
    std::size_t ownItemCount = 0;
};

// Behaviour first: our items listed as windows of their own with distinct frames mean the
// per-item bar, whatever the version says. None listed, or all at one placeholder frame, mean
// the hosted bar when the version or the running host confirms it; anything else is unknown.
BarKind detectBarKind(const BarObservation& observation);

// The observation over one read of the window list: our items' windows are those of our process
// or named as ours (on macOS 26 Control Center owns them, and they are ours only by title).
BarObservation observeBar(const WindowListSource& windows, Pid ownPID, int osMajorVersion,
                          bool menuBarHostRunning, std::size_t ownItemCount);

} // namespace quillet
