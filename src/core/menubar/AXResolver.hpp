#pragma once

#include "core/ports/Geometry.hpp"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

// Where one running application says its first status item is.
struct ReportedItem {
    std::string bundleID;
    // The application's localized name; empty when it has none.
    std::string applicationName;
    Rect frame;
};

class AccessibilityReader;
class Workspace;

// Finds where an application's status item is on screen by asking the application itself
// through the accessibility interface. Only the first status item of each application counts.
class AXResolver {
public:
    // How long Quillet waits for another application to answer one accessibility message. The
    // questions are asked on the main thread in the middle of an arrangement, so a hung
    // application must not freeze Quillet with it: a responsive one answers within a few
    // milliseconds, and one that does not answer in time is looked up by its window instead.
    static constexpr std::chrono::milliseconds kMessagingTimeout{250};

    AXResolver(const AccessibilityReader& accessibility, const Workspace& workspace)
        : accessibility_(accessibility), workspace_(workspace) {}

    // The frame of the first child of the process's extras menu bar, if it has a width.
    std::optional<Rect> firstExtraFrame(Pid pid) const;
    // The first frame found among the running applications with that bundle identifier.
    std::optional<Rect> menuBarItemFrame(const std::string& bundleID) const;
    // The first frame of each running application with that bundle identifier.
    std::vector<Rect> menuBarItemFrames(const std::string& bundleID) const;
    // What every running application but `ownPID` says of its first status item. One question
    // per application, so only for what a user reads, never for the engine's frequent readings.
    std::vector<ReportedItem> reportedItems(Pid ownPID) const;

private:
    const AccessibilityReader& accessibility_;
    const Workspace& workspace_;
};

} // namespace quillet
