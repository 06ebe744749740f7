#include "sim/SimulatedMac.hpp"

#include "core/menubar/WindowValueReading.hpp"
#include "sim/VirtualScheduler.hpp"

#include <algorithm>

namespace quillet::sim {

namespace {

class WindowView : public WindowRecord {
public:
    explicit WindowView(const SimulatedMac::Window& window) : window_(window) {}
    WindowValue value(WindowKey key) const override { return window_[key]; }

private:
    const SimulatedMac::Window& window_;
};

// The fields that name an event's target window, in the order the window server trusts them:
// the undocumented window field, the window under the pointer, the one that can handle it.
constexpr std::array<std::uint32_t, 3> kWindowFields{51, 91, 92};

std::optional<WindowID> namedWindow(const MouseEvent& event) {
    for (std::uint32_t field : kWindowFields) {
        for (const auto& [number, value] : event.integerFields) {
            if (number == field && value > 0 && value <= UINT32_MAX) {
                return static_cast<WindowID>(value);
            }
        }
    }
    return std::nullopt;
}

// The fixed right part's widths, as a 14-inch MacBook Pro on macOS 15 shows them.
constexpr double kControlCenterWidth = 33;
constexpr double kClockWidth = 87;

WindowValue boundsValue(Rect frame) {
    return {WindowValue::Dictionary{{"Height", {frame.height()}},
                                    {"Width", {frame.width()}},
                                    {"X", {frame.minX()}},
                                    {"Y", {frame.minY()}}}};
}

} // namespace

SimulatedMac::Window SimulatedMac::statusItemWindow(WindowID id, Rect frame, Pid owner,
                                                    std::string ownerName,
                                                    std::optional<std::string> title) {
    Window window;
    window[WindowKey::layer] = {std::int64_t{25}};
    window[WindowKey::bounds] = boundsValue(frame);
    window[WindowKey::ownerPID] = {std::int64_t{owner}};
    window[WindowKey::number] = {std::int64_t{id}};
    window[WindowKey::ownerName] = {std::move(ownerName)};
    if (title) {
        window[WindowKey::name] = {std::move(*title)};
    }
    return window;
}

SimulatedMac::SimulatedMac(VirtualScheduler& scheduler) : scheduler_(&scheduler) {
    input_->setScheduler(&scheduler);
    keyboard_.setScheduler(&scheduler);
}

void SimulatedMac::setDisplays(std::vector<Rect> displays) {
    const bool changed = displays != displays_;
    displays_ = std::move(displays);
    bar_->setGeometry(mainDisplayBounds(), menuBarThickness_);
    if (changed) {
        notify(WorkspaceEvent::didChangeScreenParameters);
    }
}

void SimulatedMac::setMenuBarThickness(double thickness) {
    menuBarThickness_ = thickness;
    bar_->setGeometry(mainDisplayBounds(), menuBarThickness_);
}

void SimulatedMac::installApplication(const std::string& bundleID, const std::string& path) {
    applications_[bundleID] = path;
}

void SimulatedMac::setRunningProcesses(const std::string& bundleID, std::vector<Pid> pids) {
    running_[bundleID] = std::move(pids);
}

void SimulatedMac::setFrontmostBundleID(std::optional<std::string> bundleID) {
    frontmost_ = std::move(bundleID);
}

bool SimulatedMac::visitWindowList(const Visitor& visit) const {
    if (!windowListAvailable_) {
        return false;
    }
    for (const Window& window : windows_) {
        visit(WindowView(window));
    }
    if (bar_->isHosted()) {
        for (const Window& bar : hostedBarWindows()) {
            visit(WindowView(bar));
        }
        return true;
    }
    for (const MenuBarModel::Item* item : bar_->itemsByWindow()) {
        visit(WindowView(statusBarWindow(*item, *bar_->frame(item->window))));
    }
    return true;
}

SimulatedMac::Window SimulatedMac::statusBarWindow(const MenuBarModel::Item& item,
                                                   Rect frame) const {
    auto identity = bar_->identity(item);
    auto title = listedTitle(identity);
    return statusItemWindow(item.window, frame, identity.ownerPID, std::move(identity.ownerName),
                            std::move(title));
}

const SimulatedMac::Window* SimulatedMac::findWindow(WindowID id) const {
    auto match = std::find_if(windows_.begin(), windows_.end(), [&](const Window& window) {
        return readUInt32(window[WindowKey::number]) == id;
    });
    return match == windows_.end() ? nullptr : &*match;
}

bool SimulatedMac::visitWindowDescription(WindowID window, const Visitor& visit) const {
    if (!windowListAvailable_) {
        return false;
    }
    if (const Window* found = findWindow(window)) {
        visit(WindowView(*found));
    } else if (const MenuBarModel::Item* item = bar_->item(window); item && !bar_->isHosted()) {
        // The window server's answer may lag behind a move; the model keeps track of that.
        visit(WindowView(statusBarWindow(*item, *bar_->describedFrame(window))));
    }
    return true;
}

Rect SimulatedMac::mainDisplayBounds() const {
    return displays_.empty() ? Rect{} : displays_.front();
}

std::uint32_t SimulatedMac::activeDisplayCount() const {
    return static_cast<std::uint32_t>(displays_.size());
}

std::vector<DisplayID> SimulatedMac::activeDisplays(std::uint32_t capacity) const {
    std::vector<DisplayID> ids;
    for (std::uint32_t i = 0; i < std::min<std::size_t>(capacity, displays_.size()); ++i) {
        ids.push_back(i + 1);
    }
    return ids;
}

Rect SimulatedMac::displayBounds(DisplayID display) const {
    return display >= 1 && display <= displays_.size() ? displays_[display - 1] : Rect{};
}

std::vector<Screen> SimulatedMac::screens() const {
    // AppKit measures from the bottom of the main display, upward.
    const double mainHeight = mainDisplayBounds().height();
    std::vector<Screen> result;
    for (const Rect& display : displays_) {
        Rect frame = makeRect(display.minX(), mainHeight - display.maxY(), display.width(),
                              display.height());
        Rect visible = frame;
        visible.size.height -= menuBarThickness_;
        result.push_back({frame, visible, kBackingScale});
    }
    return result;
}

std::optional<Screen> SimulatedMac::mainScreen() const {
    auto all = screens();
    return all.empty() ? std::nullopt : std::optional<Screen>(all.front());
}

std::optional<std::string> SimulatedMac::applicationPath(const std::string& bundleID) const {
    auto found = applications_.find(bundleID);
    return found == applications_.end() ? std::nullopt : std::optional(found->second);
}

std::string SimulatedMac::displayName(const std::string& path) const {
    auto slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

ImageRef SimulatedMac::icon(const std::string& path) const {
    return std::make_shared<SimImage>("icon:" + path, Size{32, 32});
}

std::vector<Pid> SimulatedMac::runningProcesses(const std::string& bundleID) const {
    auto found = running_.find(bundleID);
    return found == running_.end() ? std::vector<Pid>{} : found->second;
}

std::vector<Pid> SimulatedMac::runningApplicationProcesses() const {
    std::vector<Pid> all;
    for (const auto& [bundleID, pids] : running_) {
        all.insert(all.end(), pids.begin(), pids.end());
    }
    return all;
}

std::optional<RunningApplication> SimulatedMac::runningApplication(Pid pid) const {
    for (const auto& [bundleID, pids] : running_) {
        if (std::find(pids.begin(), pids.end(), pid) == pids.end()) {
            continue;
        }
        if (auto name = processNames_.find(pid); name != processNames_.end()) {
            return RunningApplication{bundleID, name->second};
        }
        auto items = bar_->itemsByWindow();
        auto own = std::find_if(items.begin(), items.end(),
                                [&](const MenuBarModel::Item* item) { return item->pid == pid; });
        return RunningApplication{bundleID, own == items.end() ? "" : (*own)->appName};
    }
    return std::nullopt;
}

Workspace::ObserverToken SimulatedMac::addObserver(WorkspaceEvent event,
                                                   std::function<void()> handler) {
    observers_.emplace(nextObserver_, Observer{event, std::move(handler)});
    return nextObserver_++;
}

void SimulatedMac::removeObserver(ObserverToken token) {
    observers_.erase(token);
}

void SimulatedMac::notify(WorkspaceEvent event) {
    // Copied first: a handler may add or remove observers.
    std::vector<std::function<void()>> handlers;
    for (const auto& [token, observer] : observers_) {
        if (observer.event == event) {
            handlers.push_back(observer.handler);
        }
    }
    for (const auto& handler : handlers) {
        handler();
    }
}

std::optional<CapturedBitmap> SimulatedMac::captureWindow(WindowID window) const {
    const Window* found = findWindow(window);
    // The hosted bar has no window to capture.
    auto frame = found              ? readRect((*found)[WindowKey::bounds])
                 : bar_->isHosted() ? std::nullopt
                                    : bar_->frame(window);
    if (!frame) {
        return std::nullopt;
    }
    return CapturedBitmap{static_cast<std::size_t>(frame->width() * kBackingScale),
                          static_cast<std::size_t>(frame->height() * kBackingScale), nullptr};
}

ImageRef SimulatedMac::makeImage(const CapturedBitmap&, Size pointSize) const {
    return std::make_shared<SimImage>("capture", pointSize);
}

ImageRef SimulatedMac::symbol(const char* name) const {
    return std::make_shared<SimImage>(std::string("symbol:") + name, Size{18, 18});
}

ImageRef SimulatedMac::emptyImage() const {
    return std::make_shared<SimImage>("empty", Size{});
}

WindowID SimulatedMac::addSystemItem(const std::string& name, double width, bool movable,
                                     bool numberedOnMacOS26) {
    MenuBarModel::Item item;
    item.kind = MenuBarModel::Kind::system;
    item.pid = bar_->controlCenterPID();
    item.appName = MenuBarModel::kControlCenterName;
    item.title = name;
    item.length = width;
    item.movable = movable;
    item.numberedOnMacOS26 = numberedOnMacOS26;
    return bar_->add(std::move(item));
}

void SimulatedMac::addControlCenterAndClock() {
    addSystemItem("Clock", kClockWidth, false);
    addSystemItem("BentoBox", kControlCenterWidth, false, true);
}

WindowID SimulatedMac::addApplicationItem(const Application& app, std::string title, double width) {
    auto& pids = running_[app.bundleID];
    if (std::find(pids.begin(), pids.end(), app.pid) == pids.end()) {
        pids.push_back(app.pid);
    }
    MenuBarModel::Item item;
    item.kind = MenuBarModel::Kind::application;
    item.pid = app.pid;
    item.appName = app.name;
    item.title = std::move(title);
    item.length = width;
    item.bundleID = app.bundleID;
    return bar_->add(std::move(item));
}

std::vector<WindowID> SimulatedMac::launchApplication(const Application& app,
                                                      const std::vector<AppItem>& items) {
    std::vector<WindowID> windows;
    for (const AppItem& item : items) {
        windows.push_back(addApplicationItem(app, item.title, item.width));
    }
    notify(WorkspaceEvent::didLaunchApplication);
    return windows;
}

void SimulatedMac::quitApplication(Pid pid) {
    bar_->removeProcess(pid);
    for (auto& [bundleID, pids] : running_) {
        std::erase(pids, pid);
    }
}

void SimulatedMac::activateApplication(const std::string& bundleID) {
    frontmost_ = bundleID;
    notify(WorkspaceEvent::didActivateApplication);
}

std::shared_ptr<SimStatusItem> SimulatedMac::ownStatusItem(const std::string& autosaveName) const {
    for (const auto& [window, weak] : statusItems_) {
        if (auto item = weak.lock();
            item && item->isInBar() && item->autosaveName() == autosaveName) {
            return item;
        }
    }
    return nullptr;
}

std::shared_ptr<StatusItem> SimulatedMac::createStatusItem(double length) {
    if (!ownItemsAllowed_) {
        return std::make_shared<SimStatusItem>(makeRect(0, 0, 0, menuBarThickness_), length);
    }
    auto item = std::make_shared<SimStatusItem>(bar_, length);
    std::erase_if(statusItems_, [](const auto& entry) { return entry.second.expired(); });
    statusItems_[item->window()] = item;
    return item;
}

void SimulatedMac::removeStatusItem(const std::shared_ptr<StatusItem>& item) {
    if (auto own = std::dynamic_pointer_cast<SimStatusItem>(item)) {
        own->leaveBar();
    }
}

void SimulatedMac::holdLeftButtonFrom(Duration time) {
    input_->at(time, [input = input_.get()] { input->setLeftButtonHeld(true); });
}

std::shared_ptr<EventSource> SimulatedMac::createHIDEventSource() {
    return eventSourceAvailable_ ? std::make_shared<EventSource>() : nullptr;
}

Point SimulatedMac::flipped(Point location) const {
    return {location.x, mainDisplayBounds().height() - location.y};
}

std::optional<Point> SimulatedMac::eventLocation() {
    return pointerEventAvailable_ ? std::optional(flipped(pointer_)) : std::nullopt;
}

void SimulatedMac::post(const EventSource&, const MouseEvent& event) {
    if (!canPostEvents()) {
        return;
    }
    input_->record(event);
    pointer_ = flipped(event.location);
    if (postedEventHandler_ && event.type != MouseEventType::leftMouseDragged) {
        // Monitors run on the main thread, which reads the pointer when it gets to them.
        auto deliver = [this, event] {
            if (postedEventHandler_) {
                postedEventHandler_(event);
            }
        };
        scheduler_ ? scheduler_->post(deliver) : deliver();
    }
    switch (event.type) {
    case MouseEventType::leftMouseDown:
        if ((event.flags & EventFlags::command) != 0 && bar_->isHosted()) {
            ++ignoredSyntheticDrags_;
        } else if ((event.flags & EventFlags::command) != 0) {
            if (auto window = namedWindow(event)) {
                bar_->lift(*window, event.location);
            }
        }
        break;
    case MouseEventType::leftMouseDragged:
        bar_->dragTo(event.location.x);
        break;
    case MouseEventType::leftMouseUp:
        // The first release drops a lifted item; a second one finds nothing to drop.
        bar_->drop(event.location.x);
        break;
    default:
        break;
    }
}

void SimulatedMac::warpCursor(Point location) {
    input_->warp(location);
    pointer_ = flipped(location);
}

} // namespace quillet::sim
