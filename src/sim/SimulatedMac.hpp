#pragma once

// Setting up a menu bar scene for a test:
//
//   VirtualScheduler scheduler;
//   SimulatedMac mac(scheduler);            // synthetic input's pauses move this clock
//   mac.setDisplays({makeRect(0, 0, 1512, 982)});
//   mac.setOwnProcess(4242, "Quillet");     // the default: our status items belong to it
//   mac.setNaming(MenuBarNaming::macOS26);  // the default; or perApplication
//   mac.addControlCenterAndClock();         // the fixed right part, 1392..1512
//   // Like macOS, each new item appears at the left end: add them from right to left.
//   mac.addSystemItem("Battery", 42);       // 1350..1392
//   auto dropbox = mac.addApplicationItem({"com.getdropbox.dropbox", "Dropbox", 701},
//                                         "Item-0", 30); // 1320..1350
//   // The code under test creates its items through the StatusBarHost (the mac itself); they
//   // too come in at the left end unless their autosave name has a remembered place.
//   …
//   EXPECT_EQ(mac.renderMenuBar(), "<separator> [Dropbox] [Battery] | [BentoBox] [Clock]");
//   EXPECT_LE(mac.statusItemFrame(dropbox)->maxX(), separatorFrame.minX() + 2);
//
// macOS 27's hosted bar is the same scene seen another way: `mac.setMenuBarKind(BarKind::hosted)`
// (SimulatedWorld::runMacOS(27) for a whole world) and read it through hostedItems, the host's
// accessibility tree; SimulatedMac+Hosted.cpp says what changes.
//
// Status item windows are numbered from 1000 in the order they are made and listed after the
// windows given with addWindow; `ownStatusItem(name)` finds our items to click them or read
// their images. Run the item mover inside background work of the scheduler (`inBackground`), as
// the app does: its pauses move the virtual clock there. `at(time, …)` changes the world during
// such a pause (an app quitting mid-drag); `holdLeftButtonFrom(time)` is a user pressing the
// button. A test without a scheduler can call the mover directly; its pauses then move a clock
// of the simulated Mac's own (`input().now()`).

#include "core/menubar/BarKind.hpp"
#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/InputInjector.hpp"
#include "core/ports/MenuBarHostReader.hpp"
#include "core/ports/PlatformImage.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/ports/ScreenCapture.hpp"
#include "core/ports/StatusBarHost.hpp"
#include "core/ports/WindowListSource.hpp"
#include "core/ports/Workspace.hpp"
#include "sim/engine/MenuBarModel.hpp"
#include "sim/engine/SimStatusItem.hpp"
#include "sim/engine/SimulatedInput.hpp"
#include "sim/nav/SimulatedKeyboard.hpp"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
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

class VirtualScheduler;

// A stand-in for the parts of macOS that Quillet reads and drives: displays, the window server's
// window list (with values as odd as a recording holds), the status bar with our own and other
// applications' items, synthetic input and Command-drags, installed and running applications,
// permissions and the accessibility view of applications' status items. Driven from one thread:
// the virtual scheduler runs background work in line.
class SimulatedMac : public WindowListSource,
                     public DisplayGeometry,
                     public Workspace,
                     public AccessibilityReader,
                     public MenuBarHostReader,
                     public ScreenCapture,
                     public SymbolImages,
                     public StatusBarHost,
                     public InputInjector {
public:
    // An application that shows status items.
    struct Application {
        std::string bundleID;
        std::string name;
        Pid pid = 0;
    };
    // One of its items: the window title ("Item-0", a bundle identifier, …) and width.
    struct AppItem {
        std::string title;
        double width = 24;
    };

    // Without a scheduler, input pauses move a clock of the simulated Mac's own.
    SimulatedMac() = default;
    explicit SimulatedMac(VirtualScheduler& scheduler);
    // The clock everything on this Mac happens by.
    VirtualScheduler& scheduler() const { return *scheduler_; }

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
    void setDisplays(std::vector<Rect> displays);
    void setMenuBarThickness(double thickness);
    void addWindow(Window window) { windows_.push_back(std::move(window)); }
    void setWindowListAvailable(bool available) { windowListAvailable_ = available; }
    void installApplication(const std::string& bundleID, const std::string& path);
    void setRunningProcesses(const std::string& bundleID, std::vector<Pid> pids);
    // The name a running process goes by; otherwise that of its status items' application.
    void setProcessName(Pid pid, std::string name) { processNames_[pid] = std::move(name); }
    void setFrontmostBundleID(std::optional<std::string> bundleID);
    void setExtrasMenuBarChildFrame(Pid pid, Rect frame) { extrasFrames_[pid] = frame; }
    // The two privacy grants, both on unless a test turns them off; what each one withholds is
    // told in SimulatedMac+Permissions.cpp. Nothing tells Quillet when they change, as on a Mac.
    void setScreenRecordingAllowed(bool allowed) { screenRecording_ = allowed; }
    bool screenRecordingAllowed() const { return screenRecording_; }
    void setAccessibilityTrusted(bool trusted) { accessibility_ = trusted; }
    // An application that has stopped answering accessibility messages (busy or hung).
    void setApplicationHung(Pid pid, bool hung);
    // How long callers have waited in all for hung applications' answers.
    Duration accessibilityWaited() const { return accessibilityWaited_; }
    // AppKit coordinates.
    void setPointerLocation(Point location) { pointer_ = location; }

    // The menu bar scene. Status items laid out on the main display; see MenuBarModel.
    void setNaming(MenuBarNaming naming) { bar_->setNaming(naming); }
    // Our process: its status items and their windows under per-application naming.
    void setOwnProcess(Pid pid, std::string name) { bar_->setOwnProcess(pid, std::move(name)); }
    void setControlCenterPID(Pid pid) { bar_->setControlCenterPID(pid); }
    // A system item of Control Center at the left end (an immovable one at the left end of the
    // fixed part); `numberedOnMacOS26` titles it "name-0" under macOS 26 naming.
    WindowID addSystemItem(const std::string& name, double width, bool movable = true,
                           bool numberedOnMacOS26 = false);
    // The fixed right part of every menu bar: Control Center ("BentoBox") and the clock.
    void addControlCenterAndClock();
    // An item of a running application at the left end.
    WindowID addApplicationItem(const Application& app, std::string title, double width);
    // The application starts: its items appear at the left end, in order (so the first ends
    // rightmost), then observers learn of the launch.
    std::vector<WindowID> launchApplication(const Application& app,
                                            const std::vector<AppItem>& items);
    // The application quits: its windows vanish and it no longer runs.
    void quitApplication(Pid pid);
    // One item's window vanishes; false when there is none.
    bool removeStatusItemWindow(WindowID window) { return bar_->remove(window); }
    // The application comes to the front; observers learn of the activation.
    void activateApplication(const std::string& bundleID);
    // Window descriptions report a window's previous frame once after it moved.
    void setFramesLag(bool lag) { bar_->setFramesLag(lag); }
    // How a Command-drag drops an item; see DropModel.
    void setDropModel(DropModel model) { bar_->setDropModel(model); }

    // The hosted bar of macOS 27 (SimulatedMac+Hosted.cpp): hosted, the window list shows one bar
    // window per display and no item, the host process runs and publishes the items through
    // Accessibility, its frames lag one read (setFramesLag turns that off), and synthetic
    // Command-drags move the pointer and nothing else. Any other kind is the per-item bar.
    void setMenuBarKind(BarKind kind);
    BarKind menuBarKind() const;
    // How much of every display's bar the app menus keep; the status area ends there.
    void setAppMenusWidth(double width) { bar_->setAppMenusWidth(width); }
    // Reported with two displays (medium): the host gives the frames of a secondary display's
    // items as if that display stood where the main one does.
    void setHostedFramesInMainDisplayCoordinates(bool shifted) { hostedFramesShifted_ = shifted; }
    // A recorded host tree, listed before the live bar's items.
    void setRecordedHostedItems(std::vector<HostedItem> items);
    // The user Command-drags a movable item on the main display and releases it at `x`: it works
    // on both bars. False when the item is not on the display to be grabbed.
    bool userCommandDrags(WindowID item, double x);
    // Synthetic Command-drags that the hosted bar ignored.
    int ignoredSyntheticDrags() const { return ignoredSyntheticDrags_; }
    static constexpr Pid kMenuBarHostPID = 389;

    // Reading the scene. On the hosted bar statusItemFrame is where the item stands in the row,
    // shownItemFrame where it shows on the main display: nowhere in the overflow or dropped.
    std::optional<Rect> statusItemFrame(WindowID window) const { return bar_->frame(window); }
    std::optional<Rect> shownItemFrame(WindowID window) const { return bar_->shownFrame(window); }
    std::vector<WindowID> menuBarOrder() const { return bar_->order(); }
    std::string renderMenuBar() const { return bar_->render(); }
    const MenuBarModel& menuBar() const { return *bar_; }
    // Our live status item with this autosave name, if any.
    std::shared_ptr<SimStatusItem> ownStatusItem(const std::string& autosaveName) const;

    // Input.
    void setEventSourceAvailable(bool available) { eventSourceAvailable_ = available; }
    void setPointerEventAvailable(bool available) { pointerEventAvailable_ = available; }
    void setLeftButtonHeld(bool held) { input_->setLeftButtonHeld(held); }
    // The user presses the left button at `time` and keeps holding it.
    void holdLeftButtonFrom(Duration time);
    // See SimulatedInput::at.
    void at(Duration time, std::function<void()> happening) {
        input_->at(time, std::move(happening));
    }
    const SimulatedInput& input() const { return *input_; }

    const std::vector<Window>& windows() const { return windows_; }
    const std::vector<Rect>& displays() const { return displays_; }
    int screenRecordingRequests() const { return screenRecordingRequests_; }

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
    // AppKit coordinates; InputInjector's overload gives window-server coordinates.
    Point pointerLocation() const override { return pointer_; }
    double statusBarThickness() const override { return menuBarThickness_; }

    // Workspace
    std::optional<std::string> applicationPath(const std::string& bundleID) const override;
    std::string displayName(const std::string& path) const override;
    ImageRef icon(const std::string& path) const override;
    std::vector<Pid> runningProcesses(const std::string& bundleID) const override;
    std::vector<Pid> runningApplicationProcesses() const override;
    std::optional<RunningApplication> runningApplication(Pid pid) const override;
    std::optional<std::string> frontmostBundleID() const override { return frontmost_; }
    // Every URL opened is recorded; all open.
    bool openURL(const std::string& url) override {
        openedURLs_.push_back(url);
        return true;
    }
    const std::vector<std::string>& openedURLs() const { return openedURLs_; }
    ObserverToken addObserver(WorkspaceEvent event, std::function<void()> handler) override;
    void removeObserver(ObserverToken token) override;
    // Delivers a workspace notification to its observers, in the order they were added.
    void notify(WorkspaceEvent event);
    std::size_t observerCount() const { return observers_.size(); }

    // AccessibilityReader
    bool isTrusted(bool prompt) const override;
    std::optional<Rect>
    firstExtrasMenuBarChildFrame(Pid pid,
                                 std::chrono::milliseconds messagingTimeout) const override;

    // MenuBarHostReader
    std::optional<std::vector<HostedItem>>
    hostedItems(std::chrono::milliseconds messagingTimeout) const override;

    // ScreenCapture
    bool preflight() const override { return screenRecording_; }
    void request() override { ++screenRecordingRequests_; }
    std::optional<CapturedBitmap> captureWindow(WindowID window) const override;
    ImageRef makeImage(const CapturedBitmap& bitmap, Size pointSize) const override;

    // SymbolImages
    ImageRef symbol(const char* name) const override;
    ImageRef emptyImage() const override;

    // StatusBarHost
    std::shared_ptr<StatusItem> createStatusItem(double length) override;
    // System Settings › Menu Bar › Allow in the Menu Bar, for Quillet: switched off, the items
    // made from then on are never placed (known on macOS 26.1–26.6: the item keeps its birth
    // frame, outside every menu bar; assumed: no window of it is listed, and the birth frame is
    // at the bottom left of the main display).
    void allowOwnItemsInMenuBar(bool allowed) { ownItemsAllowed_ = allowed; }
    void removeStatusItem(const std::shared_ptr<StatusItem>& item) override;

    // InputInjector
    bool canPostEvents() const override { return accessibility_; }
    std::shared_ptr<EventSource> createHIDEventSource() override;
    std::optional<Point> eventLocation() override;
    // Records the event, moves the pointer, and reconstructs Command-drags: a left-mouse-down
    // with the Command flag lifts the movable item that the window fields (51, else 91, else
    // 92) name, when the pointer is on the display; drags move it, the first release drops it.
    // Posted events reach the event monitors on the main thread, as the user's own do on a Mac.
    void post(const EventSource& source, const MouseEvent& event) override;
    // Whoever delivers posted events to the monitors (the simulated pointer).
    void setPostedEventHandler(std::function<void(const MouseEvent&)> handler) {
        postedEventHandler_ = std::move(handler);
    }
    bool isLeftButtonDown() override { return input_->isLeftButtonHeld(); }
    void hideCursor() override { input_->hideCursor(); }
    void showCursor() override { input_->showCursor(); }
    void warpCursor(Point location) override;
    void pause(std::chrono::microseconds duration) override { input_->pause(duration); }

    // Keyboard navigation's input (sim/nav/SimulatedMac+Navigation.cpp). Posted keys go to the
    // keyboard. A mouse event without a source acts as one with a source, and a plain click (down
    // and up on the same item, no Command) opens the item under it.
    void post(const MouseEvent& event) override;
    void post(const EventSource* source, const KeyEvent& event) override;
    SimulatedKeyboard& keyboard() { return keyboard_; }
    // The items opened by a click, in order.
    const std::vector<WindowID>& openedItems() const { return opened_; }

    // Backing scale of every simulated screen.
    static constexpr double kBackingScale = 2.0;

private:
    const Window* findWindow(WindowID id) const;
    // The hosted bar's own window on each display, at layer 24 (SimulatedMac+Hosted.cpp).
    std::vector<Window> hostedBarWindows() const;
    // One live item as the host describes it on display `index`, frames lagging when they do.
    HostedItem describeHosted(const MenuBarModel::Item& item, std::optional<Rect> frame,
                              std::size_t index) const;
    Window statusBarWindow(const MenuBarModel::Item& item, Rect frame) const;
    // The title as the window list gives it to our process.
    std::optional<std::string> listedTitle(MenuBarModel::WindowIdentity& identity) const;
    // The calling thread waits for an answer that does not come: the messaging timeout, or the
    // system's own when it is zero.
    void waitForAnswer(std::chrono::milliseconds messagingTimeout) const;
    // Between window-server (top-left) and AppKit (bottom-left) coordinates; the flip is its own
    // inverse.
    Point flipped(Point location) const;

    std::vector<Rect> displays_;
    double menuBarThickness_ = 24.0;
    std::vector<Window> windows_;
    bool windowListAvailable_ = true;
    std::map<std::string, std::string> applications_;
    std::map<std::string, std::vector<Pid>> running_;
    std::map<Pid, std::string> processNames_;
    std::optional<std::string> frontmost_;
    std::vector<std::string> openedURLs_;
    struct Observer {
        WorkspaceEvent event;
        std::function<void()> handler;
    };
    std::map<ObserverToken, Observer> observers_;
    ObserverToken nextObserver_ = 1;
    std::map<Pid, Rect> extrasFrames_;
    bool screenRecording_ = true;
    bool accessibility_ = true;
    std::set<Pid> hungApplications_;
    mutable Duration accessibilityWaited_{0};
    int screenRecordingRequests_ = 0;
    Point pointer_;
    // Held by pointer so that the items and happenings that refer to them survive a move of the
    // simulated Mac.
    std::shared_ptr<MenuBarModel> bar_ = std::make_shared<MenuBarModel>();
    std::unique_ptr<SimulatedInput> input_ = std::make_unique<SimulatedInput>();
    VirtualScheduler* scheduler_ = nullptr;
    std::function<void(const MouseEvent&)> postedEventHandler_;
    std::map<WindowID, std::weak_ptr<SimStatusItem>> statusItems_;
    bool ownItemsAllowed_ = true;
    bool eventSourceAvailable_ = true;
    bool pointerEventAvailable_ = true;
    std::optional<WindowID> itemAt(Point location) const;
    SimulatedKeyboard keyboard_;
    std::vector<WindowID> opened_;
    std::optional<WindowID> pressedItem_;
    std::vector<HostedItem> recordedHostedItems_;
    // The frame each hosted slot (display, window) gave at the previous read.
    mutable std::map<std::pair<std::size_t, WindowID>, std::optional<Rect>> hostedDescribed_;
    int ignoredSyntheticDrags_ = 0;
    bool hostedFramesShifted_ = false;
};

} // namespace quillet::sim
