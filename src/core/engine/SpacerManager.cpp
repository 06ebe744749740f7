#include "core/engine/SpacerManager.hpp"

#include <algorithm>
#include <string>

namespace quillet {

namespace {

SymbolImage spacerImage() {
    SymbolImage image;
    image.symbolName = "circle.dotted";
    image.accessibilityDescription = "Spacer";
    image.isTemplate = true;
    return image;
}

} // namespace

SpacerManager::SpacerManager(StatusBarHost& statusBar) : statusBar_(statusBar) {}

void SpacerManager::setCount(std::int64_t count) {
    const auto wanted = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, kMaxCount));
    while (spacers_.size() < wanted) {
        spacers_.push_back(makeSpacer(spacers_.size()));
    }
    while (spacers_.size() > wanted) {
        auto newest = std::move(spacers_.back());
        spacers_.pop_back();
        statusBar_.removeStatusItem(newest);
    }
}

std::shared_ptr<StatusItem> SpacerManager::makeSpacer(std::size_t index) {
    auto spacer = statusBar_.createStatusItem(kSpacerLength);
    spacer->setAutosaveName("quillet.spacer" + std::to_string(index));
    if (spacer->hasButton()) {
        spacer->setImage(spacerImage());
        spacer->setToolTip("Quillet spacer — ⌘-drag to position");
    }
    return spacer;
}

} // namespace quillet
