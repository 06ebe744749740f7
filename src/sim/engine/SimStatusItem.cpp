#include "sim/engine/SimStatusItem.hpp"

#include <algorithm>

namespace quillet::sim {

SimStatusItem::SimStatusItem(std::weak_ptr<MenuBarModel> bar, double length)
    : bar_(std::move(bar)), length_(length) {
    if (auto model = bar_.lock()) {
        window_ = model->addOwn(length);
        autosaveName_ = model->item(window_)->title;
    }
}

SimStatusItem::SimStatusItem(Rect birthFrame, double length)
    : length_(length), inBar_(false), birthFrame_(birthFrame) {}

SimStatusItem::~SimStatusItem() {
    leaveBar();
}

void SimStatusItem::leaveBar() {
    if (auto model = bar_.lock(); model && inBar_) {
        model->remove(window_);
    }
    inBar_ = false;
}

double SimStatusItem::buttonHeight() const {
    // The button is as high as the menu bar.
    auto model = bar_.lock();
    return model ? model->thickness() : 0;
}

// AppKit knows where the bar put the item whoever owns the window the window server lists for
// it; it measures upward from the bottom of the main display. The hosted bar tells it nothing:
// every item of ours reports the one placeholder frame.
std::optional<Rect> SimStatusItem::windowFrame() const {
    if (birthFrame_) {
        return birthFrame_;
    }
    auto model = bar_.lock();
    if (model && inBar_ && model->isHosted()) {
        return model->mainDisplayFrameInAppKit(model->placeholderFrame());
    }
    auto frame = model && inBar_ ? model->frame(window_) : std::nullopt;
    if (!frame) {
        return std::nullopt;
    }
    return model->mainDisplayFrameInAppKit(*frame);
}

bool SimStatusItem::isInBar() const {
    // The window may also have gone with the process, as when the simulated app quits.
    auto model = bar_.lock();
    return inBar_ && model && model->item(window_);
}

void SimStatusItem::setLength(double length) {
    length_ = length;
    if (auto model = bar_.lock(); model && inBar_) {
        model->setLength(window_, length);
    }
}

void SimStatusItem::setAutosaveName(const std::string& name) {
    autosaveName_ = name;
    if (auto model = bar_.lock(); model && inBar_) {
        model->setAutosaveName(window_, name);
    }
}

void SimStatusItem::setImage(const std::optional<SymbolImage>& image) {
    image_ = image;
    if (auto model = bar_.lock(); model && inBar_) {
        model->setHasImage(window_, image.has_value());
    }
}

void SimStatusItem::setAction(std::function<void(std::optional<ButtonEvent>)> handler,
                              std::uint64_t sendActionOnMask) {
    action_ = std::move(handler);
    actionMask_ = sendActionOnMask;
}

void SimStatusItem::popUpMenu(const std::vector<MenuEntry>& entries, Point location,
                              std::function<void(const std::string& action)> perform) {
    menu_ = ShownMenu{entries, location, std::move(perform)};
}

bool SimStatusItem::click(std::optional<ButtonEvent> event) {
    // An NSEvent mask has the bit of each event type it covers.
    const bool sends = !event || (event->type < 64 && (actionMask_ >> event->type) & 1U);
    if (!action_ || !sends) {
        return false;
    }
    action_(event);
    return true;
}

bool SimStatusItem::chooseMenuEntry(const std::string& title) {
    if (!menu_) {
        return false;
    }
    auto entry = std::find_if(menu_->entries.begin(), menu_->entries.end(), [&](const auto& e) {
        return e.kind == MenuEntry::Kind::item && e.title == title;
    });
    if (entry == menu_->entries.end()) {
        return false;
    }
    // A chosen menu closes. Entries aimed at the updater or the application go to them, not to
    // the core's handler.
    const bool forHandler = entry->target == MenuEntry::Target::handler;
    const std::string action = entry->action;
    auto perform = std::move(menu_->perform);
    menu_.reset();
    if (forHandler && perform) {
        perform(action);
    }
    return true;
}

} // namespace quillet::sim
