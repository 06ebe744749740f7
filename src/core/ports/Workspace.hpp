#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/PlatformImage.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillet {

// The notifications Quillet observes: the workspace's, and the application's own one that the
// displays (their number, size or arrangement) changed.
enum class WorkspaceEvent {
    didLaunchApplication,
    didActivateApplication,
    didChangeScreenParameters
};

// A running application as NSRunningApplication describes it.
struct RunningApplication {
    std::optional<std::string> bundleID;
    // Its localized name; empty when it has none.
    std::string name;
};

// What the core needs of NSWorkspace, NSRunningApplication and NSFileManager.
class Workspace {
public:
    virtual ~Workspace() = default;

    // The installed application registered under exactly this bundle identifier.
    virtual std::optional<std::string> applicationPath(const std::string& bundleID) const = 0;
    // The file manager's display name of a path (may or may not include ".app").
    virtual std::string displayName(const std::string& path) const = 0;
    // The workspace's icon for a file.
    virtual ImageRef icon(const std::string& path) const = 0;
    // Processes of the running applications with this bundle identifier, in the platform's order.
    virtual std::vector<Pid> runningProcesses(const std::string& bundleID) const = 0;
    // Processes of every running application, in the platform's order.
    virtual std::vector<Pid> runningApplicationProcesses() const = 0;
    // The running application with this process identifier, if any.
    virtual std::optional<RunningApplication> runningApplication(Pid pid) const = 0;
    // The bundle identifier of the frontmost application, if it has one.
    virtual std::optional<std::string> frontmostBundleID() const = 0;
    // Opens a URL with the application that handles it (a System Settings page, say); false
    // when the URL is malformed or nothing opens it.
    virtual bool openURL(const std::string& url) = 0;

    // Observes the notification, delivering on the main thread; the returned token removes the
    // observer.
    using ObserverToken = std::uint64_t;
    virtual ObserverToken addObserver(WorkspaceEvent event, std::function<void()> handler) = 0;
    virtual void removeObserver(ObserverToken token) = 0;
};

} // namespace quillet
