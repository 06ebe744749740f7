// Command-drags: lifting an item, dragging it and dropping it under each drop model.

#include "sim/engine/MenuBarModel.hpp"

#include <algorithm>
#include <cmath>

namespace quillet::sim {

bool MenuBarModel::lift(WindowID window, Point pointer) {
    auto found = find(window);
    if (lifted_ || found == items_.end() || !found->movable || !display_.contains(pointer)) {
        return false;
    }
    const Rect where = *frame(window);
    const auto index = static_cast<std::size_t>(found - items_.begin());
    lifted_ = Lifted{std::move(*found), pointer.x - where.minX(), where.minX(), std::nullopt};
    items_.erase(found);
    // Live models keep the gap where the item was until the pointer moves it; the others close
    // it at once.
    if (isLive()) {
        lifted_->gap = index;
    }
    return true;
}

void MenuBarModel::dragTo(double pointerX) {
    if (!lifted_) {
        return;
    }
    const double previous = lifted_->x;
    lifted_->x = std::clamp(pointerX, display_.minX(), display_.maxX()) - lifted_->grabOffset;
    if (lifted_->gap) {
        moveGap(lifted_->x, previous);
    }
}

void MenuBarModel::drop(double pointerX) {
    if (!lifted_) {
        return;
    }
    dragTo(pointerX);
    const double x = std::clamp(pointerX, display_.minX(), display_.maxX());
    const std::size_t slot = lifted_->gap ? *lifted_->gap : dropSlot(x);
    Item dropped = std::move(lifted_->item);
    lifted_.reset();
    const WindowID window = dropped.window;
    items_.insert(items_.begin() + static_cast<long>(slot), std::move(dropped));
    remember(*find(window), *frame(window));
}

std::optional<WindowID> MenuBarModel::lifted() const {
    return lifted_ ? std::optional(lifted_->item.window) : std::nullopt;
}

bool MenuBarModel::isLive() const {
    return dropModel_ == DropModel::liveByPointer || dropModel_ == DropModel::liveByLeadingEdge ||
           dropModel_ == DropModel::liveByWholeItem;
}

std::size_t MenuBarModel::dropSlot(double pointerX) const {
    return dropModel_ == DropModel::nearestGapAtRelease ? nearestGap(pointerX) : slotAt(pointerX);
}

// The frames used here include the gap, so each step of the gap shifts the neighbours it passes
// and the next test sees them where they now are. The gap never enters the fixed part.
void MenuBarModel::moveGap(double x, double previousX) {
    const std::size_t end = fixedStart();
    const double itemWidth = width(lifted_->item);
    std::size_t& gap = *lifted_->gap;
    gap = std::min(gap, end);
    if (dropModel_ == DropModel::liveByPointer) {
        const double pointer = x + lifted_->grabOffset;
        // Each step moves the gap towards the pointer; a pointer over the gap leaves it.
        for (std::size_t steps = 0; steps <= items_.size(); ++steps) {
            const auto frames = layout();
            std::size_t next = gap;
            if (gap > 0 && pointer < frames[gap - 1].midX()) {
                next = gap - 1;
            } else if (gap < end && pointer >= frames[gap].midX()) {
                next = gap + 1;
            }
            if (next == gap) {
                return;
            }
            gap = next;
        }
        return;
    }
    const bool wholeItem = dropModel_ == DropModel::liveByWholeItem;
    for (std::size_t steps = 0; steps <= items_.size(); ++steps) {
        const auto frames = layout();
        std::size_t next = gap;
        if (x < previousX && gap > 0) {
            // Moving left, the leading edge is the item's left edge.
            const Rect& neighbour = frames[gap - 1];
            if (x < (wholeItem ? neighbour.minX() : neighbour.midX())) {
                next = gap - 1;
            }
        } else if (x > previousX && gap < end) {
            const Rect& neighbour = frames[gap];
            if (x + itemWidth > (wholeItem ? neighbour.maxX() : neighbour.midX())) {
                next = gap + 1;
            }
        }
        if (next == gap) {
            return;
        }
        gap = next;
    }
}

std::size_t MenuBarModel::nearestGap(double pointerX) const {
    const auto frames = layout();
    const std::size_t end = fixedStart();
    if (end == 0) {
        return 0;
    }
    // Gap k stands at the left edge of item k; the last one at the right edge of the movable part.
    std::size_t best = 0;
    double bestDistance = std::fabs(pointerX - frames.front().minX());
    for (std::size_t k = 1; k <= end; ++k) {
        const double edge = k == end ? frames[end - 1].maxX() : frames[k].minX();
        const double distance = std::fabs(pointerX - edge);
        if (distance < bestDistance) {
            best = k;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace quillet::sim
