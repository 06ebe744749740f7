#include "sim/engine/MenuBarModel.hpp"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace quillet::sim {

void MenuBarModel::setGeometry(Rect mainDisplay, double thickness) {
    display_ = mainDisplay;
    thickness_ = thickness;
}

void MenuBarModel::setOwnProcess(Pid pid, std::string name) {
    ownPID_ = pid;
    ownName_ = std::move(name);
}

WindowID MenuBarModel::add(Item item) {
    item.window = nextWindow_++;
    const WindowID window = item.window;
    if (auto distance = rememberedDistance(positionKey(item)); distance && item.movable) {
        insertNear(std::move(item), *distance);
        return window;
    }
    // Immovable items only ever join the fixed part, so it stays one run at the right end.
    auto at = item.movable ? items_.begin() : items_.begin() + static_cast<long>(fixedStart());
    items_.insert(at, std::move(item));
    return window;
}

WindowID MenuBarModel::addOwn(double length) {
    Item item;
    item.kind = Kind::own;
    item.pid = ownPID_;
    item.appName = ownName_;
    item.title = "Item-" + std::to_string(ownItemsMade_++);
    item.length = length;
    item.window = nextWindow_++;
    const WindowID window = item.window;
    if (auto distance = rememberedDistance(item.title)) {
        insertNear(std::move(item), *distance);
    } else {
        items_.insert(items_.begin(), std::move(item));
    }
    return window;
}

bool MenuBarModel::remove(WindowID window) {
    if (lifted_ && lifted_->item.window == window) {
        lifted_.reset();
        return true;
    }
    auto found = find(window);
    if (found == items_.end()) {
        return false;
    }
    if (auto where = frame(window); where && found->kind == Kind::own) {
        remember(*found, *where);
    }
    items_.erase(found);
    described_.erase(window);
    return true;
}

void MenuBarModel::removeProcess(Pid pid) {
    std::vector<WindowID> windows;
    for (const Item* each : itemsByWindow()) {
        if (each->pid == pid) {
            windows.push_back(each->window);
        }
    }
    // The application's defaults keep where its items were dropped.
    for (WindowID window : windows) {
        remove(window);
    }
}

void MenuBarModel::setLength(WindowID window, double length) {
    if (auto found = find(window); found != items_.end()) {
        found->length = length;
    } else if (lifted_ && lifted_->item.window == window) {
        lifted_->item.length = length;
    }
}

void MenuBarModel::setHasImage(WindowID window, bool hasImage) {
    if (auto found = find(window); found != items_.end()) {
        found->hasImage = hasImage;
    } else if (lifted_ && lifted_->item.window == window) {
        lifted_->item.hasImage = hasImage;
    }
}

void MenuBarModel::setAutosaveName(WindowID window, const std::string& name) {
    auto found = find(window);
    if (found == items_.end()) {
        return;
    }
    found->title = name;
    if (auto distance = rememberedDistance(name); distance && found->movable) {
        Item moving = std::move(*found);
        items_.erase(found);
        insertNear(std::move(moving), *distance);
    }
}

const MenuBarModel::Item* MenuBarModel::item(WindowID window) const {
    if (lifted_ && lifted_->item.window == window) {
        return &lifted_->item;
    }
    auto found = std::find_if(items_.begin(), items_.end(),
                              [&](const Item& each) { return each.window == window; });
    return found == items_.end() ? nullptr : &*found;
}

std::vector<const MenuBarModel::Item*> MenuBarModel::itemsByWindow() const {
    std::vector<const Item*> all;
    for (const Item& each : items_) {
        all.push_back(&each);
    }
    if (lifted_) {
        all.push_back(&lifted_->item);
    }
    std::sort(all.begin(), all.end(),
              [](const Item* a, const Item* b) { return a->window < b->window; });
    return all;
}

std::vector<WindowID> MenuBarModel::order() const {
    std::vector<WindowID> windows;
    for (const Item& each : items_) {
        windows.push_back(each.window);
    }
    return windows;
}

std::optional<Rect> MenuBarModel::frame(WindowID window) const {
    if (lifted_ && lifted_->item.window == window) {
        return makeRect(lifted_->x, display_.minY(), width(lifted_->item), thickness_);
    }
    auto frames = layout();
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (items_[i].window == window) {
            return frames[i];
        }
    }
    return std::nullopt;
}

std::optional<Rect> MenuBarModel::describedFrame(WindowID window) {
    auto current = frame(window);
    if (!current) {
        return std::nullopt;
    }
    auto [previous, firstRead] = described_.try_emplace(window, *current);
    if (firstRead || !framesLag_) {
        previous->second = *current;
        return current;
    }
    return std::exchange(previous->second, *current);
}

MenuBarModel::WindowIdentity MenuBarModel::identity(const Item& each) const {
    if (naming_ == MenuBarNaming::macOS26) {
        const bool numbered = each.kind == Kind::system && each.numberedOnMacOS26;
        return {controlCenterPID_, kControlCenterName, numbered ? each.title + "-0" : each.title};
    }
    if (each.kind == Kind::system) {
        return {controlCenterPID_, kControlCenterName, each.title};
    }
    return {each.pid, each.appName, each.title};
}

std::optional<Rect> MenuBarModel::firstFrameOfProcess(Pid pid) const {
    for (const Item* each : itemsByWindow()) {
        if (each->pid == pid) {
            return shownFrame(each->window);
        }
    }
    return std::nullopt;
}

std::optional<double> MenuBarModel::rememberedDistance(const std::string& autosaveName) const {
    auto found = remembered_.find(autosaveName);
    return found == remembered_.end() ? std::nullopt : std::optional(found->second);
}

double MenuBarModel::width(const Item& each) const {
    if (each.kind != Kind::own || (std::isfinite(each.length) && each.length >= 0)) {
        return each.length;
    }
    return each.hasImage ? kImageWidth : kEmptyWidth;
}

std::vector<Rect> MenuBarModel::layout() const {
    std::vector<Rect> frames(items_.size());
    double right = display_.maxX();
    // The slot after which the lifted item's gap opens; none when the gap is absent. A plain
    // index rather than an optional: GCC 12's -O2 flags the optional as maybe uninitialized.
    const std::size_t gapAfter = lifted_ && lifted_->gap ? *lifted_->gap : 0;
    for (std::size_t i = items_.size(); i-- > 0;) {
        if (gapAfter == i + 1) {
            right -= width(lifted_->item);
        }
        // A dropped item leaves no gap on the hosted bar.
        const double itemWidth =
            hosted_ && isDroppedOn(items_[i], display_) ? 0.0 : width(items_[i]);
        frames[i] = makeRect(right - itemWidth, display_.minY(), itemWidth, thickness_);
        right -= itemWidth;
    }
    return frames;
}

std::size_t MenuBarModel::fixedStart() const {
    std::size_t start = items_.size();
    while (start > 0 && !items_[start - 1].movable) {
        --start;
    }
    return start;
}

std::size_t MenuBarModel::slotAt(double pointerX) const {
    const auto frames = layout();
    const std::size_t end = fixedStart();
    if (end == 0 || pointerX < frames.front().minX()) {
        return 0;
    }
    for (std::size_t i = 0; i < end; ++i) {
        if (pointerX >= frames[i].minX() && pointerX < frames[i].maxX()) {
            return pointerX >= frames[i].midX() ? i + 1 : i;
        }
    }
    return end;
}

std::vector<MenuBarModel::Item>::iterator MenuBarModel::find(WindowID window) {
    return std::find_if(items_.begin(), items_.end(),
                        [&](const Item& each) { return each.window == window; });
}

void MenuBarModel::insertNear(Item moving, double distance) {
    // Slot k puts the item's right edge at the summed width of the items from k on.
    const std::size_t end = fixedStart();
    double slotDistance = 0;
    for (std::size_t k = items_.size(); k > end; --k) {
        slotDistance += width(items_[k - 1]);
    }
    std::size_t best = end;
    double bestGap = std::fabs(slotDistance - distance);
    for (std::size_t k = end; k-- > 0;) {
        slotDistance += width(items_[k]);
        const double gap = std::fabs(slotDistance - distance);
        if (gap < bestGap) {
            best = k;
            bestGap = gap;
        }
    }
    items_.insert(items_.begin() + static_cast<long>(best), std::move(moving));
}

void MenuBarModel::remember(const Item& each, const Rect& where) {
    if (each.kind != Kind::system) {
        remembered_[positionKey(each)] = display_.maxX() - where.maxX();
    }
}

// Our items are remembered by autosave name; an application's by its own defaults and the
// item's autosave name, which is its title.
std::string MenuBarModel::positionKey(const Item& each) {
    return each.kind == Kind::own ? each.title : each.bundleID + "\n" + each.title;
}

std::string MenuBarModel::label(const Item& each) const {
    if (each.kind != Kind::own) {
        return each.kind == Kind::application ? each.appName : each.title;
    }
    std::string name = each.title;
    if (name.starts_with("quillet.")) {
        name.erase(0, 8);
    }
    if (std::isfinite(each.length) && each.length >= 0) {
        std::ostringstream length;
        length << each.length;
        name += ' ';
        name += length.str();
    }
    std::string bracketed = "<";
    bracketed += name;
    bracketed += '>';
    return bracketed;
}

std::string MenuBarModel::render() const {
    if (hosted_) {
        return renderHosted();
    }
    const auto frames = layout();
    const std::size_t end = fixedStart();
    std::string line;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (!line.empty()) {
            line += ' ';
        }
        if (i == end) {
            line += "| ";
        }
        const std::string name = label(items_[i]);
        const bool offScreen = frames[i].maxX() <= display_.minX();
        const bool own = items_[i].kind == Kind::own;
        line += offScreen ? "(" + name + ")" : own ? name : "[" + name + "]";
    }
    if (lifted_) {
        const std::string name = label(lifted_->item);
        line += (line.empty() ? "^" : " ^") +
                (lifted_->item.kind == Kind::own ? name : "[" + name + "]");
    }
    return line;
}

} // namespace quillet::sim
