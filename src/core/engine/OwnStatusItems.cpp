#include "core/engine/OwnStatusItems.hpp"

#include "core/menubar/ScreenCoordinates.hpp"

#include <algorithm>

namespace quillet {

std::shared_ptr<StatusItem> OwnStatusItems::createStatusItem(double length) {
    std::erase_if(items_, [](const auto& item) { return item.expired(); });
    auto item = statusBar_.createStatusItem(length);
    items_.push_back(item);
    return item;
}

void OwnStatusItems::removeStatusItem(const std::shared_ptr<StatusItem>& item) {
    std::erase_if(items_, [&](const auto& kept) { return kept.lock() == item; });
    statusBar_.removeStatusItem(item);
}

std::vector<OwnItemFrame> OwnStatusItems::windowServerFrames() const {
    std::vector<OwnItemFrame> frames;
    for (const auto& weak : items_) {
        const auto item = weak.lock();
        const auto appKit = item ? item->windowFrame() : std::nullopt;
        if (const auto frame = appKit ? windowServerRect(displays_, *appKit) : std::nullopt) {
            frames.push_back({item->autosaveName(), *frame});
        }
    }
    return frames;
}

} // namespace quillet
