#pragma once

#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/PlatformImage.hpp"
#include "core/ports/ScreenCapture.hpp"
#include "core/ports/WindowListSource.hpp"
#include "core/ports/Workspace.hpp"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillet::sim {

// An image of the simulated Mac: a name to recognise it by and a size.
class SimImage : public PlatformImage {
public:
    SimImage(std::string name, Size size) : name_(std::move(name)), size_(size) {}
    Size pointSize() const override { return size_; }
    const std::string& name() const { return name_; }

private:
    std::string name_;
    Size size_;
};

// A stand-in for the parts of macOS that Quillet reads: displays, the window server's window
// list (with values as odd as a recording holds), installed and running applications,
// permissions and the accessibility view of applications' status items.
class SimulatedMac : public WindowListSource,
                     public DisplayGeometry,
                     public Workspace,
                     public AccessibilityReader,
                     public ScreenCapture,
                     public SymbolImages {
public:
    // One window description, value by value (indexed by WindowKey).
    struct Window {
        std::array<WindowValue, 6> values;
        WindowValue& operator[](WindowKey key) { return values[static_cast<std::size_t>(key)]; }
        const WindowValue& operator[](WindowKey key) const {
            return values[static_cast<std::size_t>(key)];
        }
    };

    // A well-formed status item window, as macOS lists one.
    static Window statusItemWindow(WindowID id, Rect frame, Pid owner, std::string ownerName,
                                   std::optional<std::string> title);

    // Setting the stage. The first display is the main display (window-server coordinates).
    void setDisplays(std::vector<Rect> displays) { displays_ = std::move(displays); }
    void setMenuBarThickness(double thickness) { menuBarThickness_ = thickness; }
    void addWindow(Window window) { windows_.push_back(std::move(window)); }
    void setWindowListAvailable(bool available) { windowListAvailable_ = available; }
    void installApplication(const std::string& bundleID, const std::string& path);
    void setRunningProcesses(const std::string& bundleID, std::vector<Pid> pids);
    void setFrontmostBundleID(std::optional<std::string> bundleID);
    void setExtrasMenuBarChildFrame(Pid pid, Rect frame) { extrasFrames_[pid] = frame; }
    void setScreenRecordingAllowed(bool allowed) { screenRecording_ = allowed; }
    void setAccessibilityTrusted(bool trusted) { accessibility_ = trusted; }
    void setPointerLocation(Point location) { pointer_ = location; }

    const std::vector<Window>& windows() const { return windows_; }
    const std::vector<Rect>& displays() const { return displays_; }
    int screenRecordingRequests() const { return screenRecordingRequests_; }
    int accessibilityPrompts() const { return accessibilityPrompts_; }

    // WindowListSource
    bool visitWindowList(const Visitor& visit) const override;
    bool visitWindowDescription(WindowID window, const Visitor& visit) const override;

    // DisplayGeometry
    Rect mainDisplayBounds() const override;
    std::uint32_t activeDisplayCount() const override;
    std::vector<DisplayID> activeDisplays(std::uint32_t capacity) const override;
    Rect displayBounds(DisplayID display) const override;
    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    Point pointerLocation() const override { return pointer_; }
    double statusBarThickness() const override { return menuBarThickness_; }

    // Workspace
    std::optional<std::string> applicationPath(const std::string& bundleID) const override;
    std::string displayName(const std::string& path) const override;
    ImageRef icon(const std::string& path) const override;
    std::vector<Pid> runningProcesses(const std::string& bundleID) const override;
    std::optional<std::string> frontmostBundleID() const override { return frontmost_; }
    ObserverToken addObserver(WorkspaceEvent event, std::function<void()> handler) override;
    void removeObserver(ObserverToken token) override;
    // Delivers a workspace notification to its observers, in the order they were added.
    void notify(WorkspaceEvent event);
    std::size_t observerCount() const { return observers_.size(); }

    // AccessibilityReader
    bool isTrusted(bool prompt) const override;
    std::optional<Rect> firstExtrasMenuBarChildFrame(Pid pid) const override;

    // ScreenCapture
    bool preflight() const override { return screenRecording_; }
    void request() override { ++screenRecordingRequests_; }
    std::optional<CapturedBitmap> captureWindow(WindowID window) const override;
    ImageRef makeImage(const CapturedBitmap& bitmap, Size pointSize) const override;

    // SymbolImages
    ImageRef symbol(const char* name) const override;
    ImageRef emptyImage() const override;

    // Backing scale of every simulated screen.
    static constexpr double kBackingScale = 2.0;

private:
    const Window* findWindow(WindowID id) const;

    std::vector<Rect> displays_;
    double menuBarThickness_ = 24.0;
    std::vector<Window> windows_;
    bool windowListAvailable_ = true;
    std::map<std::string, std::string> applications_;
    std::map<std::string, std::vector<Pid>> running_;
    std::optional<std::string> frontmost_;
    struct Observer {
        WorkspaceEvent event;
        std::function<void()> handler;
    };
    std::map<ObserverToken, Observer> observers_;
    ObserverToken nextObserver_ = 1;
    std::map<Pid, Rect> extrasFrames_;
    bool screenRecording_ = false;
    bool accessibility_ = false;
    mutable int accessibilityPrompts_ = 0;
    int screenRecordingRequests_ = 0;
    Point pointer_;
};

} // namespace quillet::sim
