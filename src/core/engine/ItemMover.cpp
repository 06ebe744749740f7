#include "core/engine/ItemMover.hpp"

#include "core/engine/HID.hpp"
#include "core/ports/InputInjector.hpp"
#include "core/ports/WindowListSource.hpp"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

namespace quillet::ItemMover {

namespace {

using std::chrono::microseconds;

// Tuned so that the window server follows the drag; keep them.
constexpr microseconds kAfterMove{20000};
constexpr microseconds kAfterPress{50000};
constexpr microseconds kBetweenDrags{14000};
constexpr microseconds kBeforeRelease{40000};
constexpr int kDragSteps = 16;
constexpr double kDragStep = 0.0625;
// The settle pause after each attempt starts here and grows by half each time.
constexpr std::uint32_t kFirstSettlePause = 70000;

// A landing within two points of the anchor's edge counts.
constexpr double kLandingSlack = 2.0;
// The drop aims this far beyond the anchor, past the item's own width.
constexpr double kDropMargin = 4.0;

// The window under the pointer, and the one under it that can handle the event.
constexpr std::uint32_t kWindowUnderPointerField = 91;
constexpr std::uint32_t kWindowThatCanHandleField = 92;

bool hasLanded(Side side, const Rect& item, const Rect& anchor) {
    return side == Side::left ? item.maxX() <= anchor.minX() + kLandingSlack
                              : anchor.maxX() - kLandingSlack <= item.minX();
}

double dropX(Side side, const Rect& anchor, double itemWidth) {
    return side == Side::left ? anchor.minX() - itemWidth - kDropMargin
                              : anchor.maxX() + itemWidth + kDropMargin;
}

struct Frames {
    Rect item;
    Rect anchor;
};

std::optional<Frames> readFrames(const WindowListSource& windows, WindowID item, WindowID anchor) {
    auto itemFrame = HID::frame(windows, item);
    auto anchorFrame = HID::frame(windows, anchor);
    if (!itemFrame || !anchorFrame) {
        return std::nullopt;
    }
    return Frames{*itemFrame, *anchorFrame};
}

// One Command-drag of the item to the drop target beside the anchor.
class Drag {
public:
    Drag(InputInjector& input, const EventSource& source, WindowID item)
        : input_(input), source_(source), item_(item) {}

    void perform(const WindowListSource& windows, Side side, WindowID anchor,
                 const Frames& frames) {
        const Point start = frames.item.center();
        const double width = frames.item.width();
        const double target = dropX(side, frames.anchor, width);

        post(MouseEventType::mouseMoved, start.x, start.y);
        input_.pause(kAfterMove);
        post(MouseEventType::leftMouseDown, start.x, start.y);
        input_.pause(kAfterPress);
        for (int step = 1; step <= kDragSteps; ++step) {
            const double x =
                step == kDragSteps ? target : start.x + (target - start.x) * step * kDragStep;
            post(MouseEventType::leftMouseDragged, x, start.y);
            input_.pause(kBetweenDrags);
        }
        input_.pause(kBeforeRelease);

        // While the item was lifted the others closed its gap, which may have moved the anchor:
        // the release goes beside where the anchor is now.
        double release = target;
        if (auto anchorNow = HID::frame(windows, anchor)) {
            release = dropX(side, *anchorNow, width);
        }
        if (release != target) {
            post(MouseEventType::leftMouseDragged, release, start.y);
        }
        // Released twice on purpose; the second release finds nothing lifted.
        post(MouseEventType::leftMouseUp, release, start.y);
        post(MouseEventType::leftMouseUp, release, start.y);
    }

private:
    void post(MouseEventType type, double x, double y) {
        const std::int64_t window = item_;
        input_.post(source_, {type,
                              {x, y},
                              EventFlags::command,
                              {{kWindowUnderPointerField, window},
                               {kWindowThatCanHandleField, window},
                               {windowIDField, window}}});
    }

    InputInjector& input_;
    const EventSource& source_;
    WindowID item_;
};

bool dragUntilLanded(InputInjector& input, const WindowListSource& windows,
                     const EventSource& source, WindowID item, Side side, WindowID anchor,
                     int maxAttempts) {
    std::uint32_t settlePause = kFirstSettlePause;
    for (int attempts = 0;; ++attempts) {
        if (attempts == maxAttempts) {
            auto frames = readFrames(windows, item, anchor);
            return frames && hasLanded(side, frames->item, frames->anchor);
        }
        // A user's own drag is never fought.
        if (input.isLeftButtonDown()) {
            return false;
        }
        auto frames = readFrames(windows, item, anchor);
        if (!frames) {
            return false;
        }
        if (hasLanded(side, frames->item, frames->anchor)) {
            return true;
        }
        Drag(input, source, item).perform(windows, side, anchor, *frames);
        input.pause(microseconds(settlePause));
        settlePause += settlePause >> 1;
    }
}

} // namespace

bool move(InputInjector& input, const WindowListSource& windows, WindowID itemWID, Side side,
          WindowID anchorWID, int maxAttempts) {
    if (maxAttempts < 0 || maxAttempts > maxAttemptLimit) {
        std::fprintf(stderr, "ItemMover::move: an attempt limit of %d is outside 0...%d\n",
                     maxAttempts, maxAttemptLimit);
        std::abort();
    }
    // Without the Accessibility grant every event would be dropped: neither hide the cursor nor
    // try again and again.
    if (!input.canPostEvents()) {
        return false;
    }
    auto source = input.createHIDEventSource();
    if (!source) {
        return false;
    }
    const Point home = input.eventLocation().value_or(Point{0, 0});
    input.hideCursor();
    const bool landed =
        dragUntilLanded(input, windows, *source, itemWID, side, anchorWID, maxAttempts);
    input.warpCursor(home);
    input.showCursor();
    return landed;
}

} // namespace quillet::ItemMover
