#include "sim/SimulatedMac.hpp"

#include "core/menubar/WindowValueReading.hpp"

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
    return true;
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

bool SimulatedMac::isTrusted(bool prompt) const {
    if (prompt && !accessibility_) {
        ++accessibilityPrompts_;
    }
    return accessibility_;
}

std::optional<Rect> SimulatedMac::firstExtrasMenuBarChildFrame(Pid pid) const {
    auto found = extrasFrames_.find(pid);
    if (!accessibility_ || found == extrasFrames_.end()) {
        return std::nullopt;
    }
    return found->second;
}

std::optional<CapturedBitmap> SimulatedMac::captureWindow(WindowID window) const {
    const Window* found = findWindow(window);
    auto frame = found ? readRect((*found)[WindowKey::bounds]) : std::nullopt;
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

} // namespace quillet::sim
