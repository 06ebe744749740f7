#pragma once

#include "core/ports/PlatformImage.hpp"
#include "core/ports/Workspace.hpp"

#include <memory>

namespace quillet::macos {

// Installed and running applications (NSWorkspace, NSRunningApplication, NSFileManager), the
// workspace's launch and activation notifications, the application's notice that the displays
// changed, and the system's symbol images (NSImage).
class AppKitWorkspace final : public Workspace, public SymbolImages {
public:
    AppKitWorkspace();
    // Removes the observers still registered.
    ~AppKitWorkspace() override;
    AppKitWorkspace(const AppKitWorkspace&) = delete;
    AppKitWorkspace& operator=(const AppKitWorkspace&) = delete;

    // Workspace
    std::optional<std::string> applicationPath(const std::string& bundleID) const override;
    std::string displayName(const std::string& path) const override;
    ImageRef icon(const std::string& path) const override;
    std::vector<Pid> runningProcesses(const std::string& bundleID) const override;
    std::vector<Pid> runningApplicationProcesses() const override;
    std::optional<RunningApplication> runningApplication(Pid pid) const override;
    std::optional<std::string> frontmostBundleID() const override;
    bool openURL(const std::string& url) override;
    ObserverToken addObserver(WorkspaceEvent event, std::function<void()> handler) override;
    void removeObserver(ObserverToken token) override;

    // SymbolImages
    ImageRef symbol(const char* name) const override;
    ImageRef emptyImage() const override;

private:
    // The notification center's observer objects, by token (Objective-C, so kept out of here).
    struct Observers;
    std::unique_ptr<Observers> observers_;
};

} // namespace quillet::macos
