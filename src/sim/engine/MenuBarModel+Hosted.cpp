// The menu bar as macOS 27 hosts it, in one system process (com.apple.MenuBarAgent) that lays the
// items out on every display and publishes them only through Accessibility.
//
// Known (see the macOS 27 reference for each source and how sure it is):
//  - No window per item (high): nothing here adds one to the window list.
//  - An item whose window, its length plus about 16 pt of chrome, reaches half the width of the
//    display it is drawn on is dropped from that display's bar and tree (high on "about half",
//    medium on the 16). The owner is not told: its length stays as it was.
//  - A dropped item can still take room (medium: a 1920-pt item on an 1800-pt display took about
//    1000 pt and blanked the app menus), and a 10000-pt separator hides nothing (high).
//  - Items pushed left past the status area go into the system's overflow menu, where they stay
//    usable, with no frame (high on the overflow, medium on the missing frame).
//  - Our own items all report one placeholder frame, which grows with the longest (medium).
// Assumed:
//  - The room a dropped item takes is the app menus' (they go blank), not the other items': those
//    close its gap, so nothing is pushed into the overflow by it.
//  - The status area ends on the left where the app menus need their room; the width of the
//    menus is a setting (setAppMenusWidth), the same on every display.
//  - A dropped item takes half its display's width of room (the measured 1000 pt of 1800 rounded
//    down to the threshold), never more than the display.
//  - The placeholder frame sits at the top left of the main display.
// Not modelled: the bar reordering itself between collapses (medium), and overflow items reported
// stacked at one frame instead of with none (the other reported alternative).

#include "sim/engine/MenuBarModel.hpp"

#include <algorithm>

namespace quillet::sim {

bool MenuBarModel::isDroppedOn(const Item& each, const Rect& display) const {
    return width(each) + kItemChrome >= display.width() / 2;
}

std::vector<MenuBarModel::HostedSlot> MenuBarModel::hostedLayout(const Rect& display) const {
    const double leftLimit = display.minX() + appMenusWidth_;
    std::vector<HostedSlot> slots(items_.size());
    double right = display.maxX();
    // Once one item does not fit, every item left of it is pushed into the overflow too.
    bool overflowing = false;
    for (std::size_t i = items_.size(); i-- > 0;) {
        const Item& each = items_[i];
        slots[i].window = each.window;
        if (isDroppedOn(each, display)) {
            slots[i].dropped = true;
            continue;
        }
        const double itemWidth = width(each);
        overflowing = overflowing || right - itemWidth < leftLimit;
        if (!overflowing) {
            slots[i].frame = makeRect(right - itemWidth, display.minY(), itemWidth, thickness_);
            right -= itemWidth;
        }
    }
    return slots;
}

double MenuBarModel::droppedRoom(const Rect& display) const {
    double room = 0;
    for (const Item& each : items_) {
        if (isDroppedOn(each, display)) {
            room += display.width() / 2;
        }
    }
    return std::min(room, display.width());
}

std::optional<Rect> MenuBarModel::shownFrame(WindowID window) const {
    if (!hosted_) {
        return frame(window);
    }
    const auto order = this->order();
    const auto at = std::find(order.begin(), order.end(), window);
    return at == order.end()
               ? std::nullopt
               : hostedLayout(display_)[static_cast<std::size_t>(at - order.begin())].frame;
}

Rect MenuBarModel::mainDisplayFrameInAppKit(const Rect& frame) const {
    return makeRect(frame.minX(), display_.height() - frame.maxY(), frame.width(), frame.height());
}

Rect MenuBarModel::placeholderFrame() const {
    double widest = 0;
    for (const Item* each : itemsByWindow()) {
        if (each->kind == Kind::own) {
            widest = std::max(widest, width(*each));
        }
    }
    return makeRect(display_.minX(), display_.minY(), widest, thickness_);
}

std::string MenuBarModel::renderHosted() const {
    const auto slots = hostedLayout(display_);
    const std::size_t end = fixedStart();
    std::string line;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        line += line.empty() ? "" : " ";
        line += i == end ? "| " : "";
        const std::string name = label(items_[i]);
        const std::string shown = items_[i].kind == Kind::own ? name : "[" + name + "]";
        line += slots[i].dropped ? "{" + name + "}" : slots[i].frame ? shown : "«" + shown + "»";
    }
    if (lifted_) {
        line += (line.empty() ? "^" : " ^") + (lifted_->item.kind == Kind::own
                                                   ? label(lifted_->item)
                                                   : "[" + label(lifted_->item) + "]");
    }
    return droppedRoom(display_) > 0 ? line + " (app menus blanked)" : line;
}

} // namespace quillet::sim
