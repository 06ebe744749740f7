#include "core/menubar/BarKind.hpp"

#include "core/menubar/ItemEnumerator.hpp"
#include "core/menubar/WindowValueReading.hpp"
#include "core/ports/WindowListSource.hpp"

#include <algorithm>

namespace quillet {

namespace {

// Status item windows sit at layer 25 (kCGStatusWindowLevel); the enumerator's wider range keeps
// the menu bar's neighbours in view too.
constexpr std::int64_t kMinItemLayer = 20;
constexpr std::int64_t kMaxItemLayer = 30;

bool allShareOneFrame(const std::vector<Rect>& frames) {
    return std::all_of(frames.begin(), frames.end(),
                       [&](const Rect& frame) { return frame == frames.front(); });
}

bool allDistinct(const std::vector<Rect>& frames) {
    for (std::size_t i = 0; i < frames.size(); ++i) {
        for (std::size_t j = i + 1; j < frames.size(); ++j) {
            if (frames[i] == frames[j]) {
                return false;
            }
        }
    }
    return true;
}

bool isOwnWindow(const WindowRecord& record, Pid ownPID) {
    if (readInt32(record.value(WindowKey::ownerPID)) == ownPID) {
        return true;
    }
    auto name = readString(record.value(WindowKey::name));
    return name && !name->empty() && isOwnItemName(*name);
}

} // namespace

BarKind detectBarKind(const BarObservation& observation) {
    const auto& frames = observation.ownItemWindowFrames;
    // One window stands for itself only when we made one item; of several items, a single
    // window may be the placeholder that all of them share.
    const bool ownWindows =
        frames.size() >= 2 || (frames.size() == 1 && observation.ownItemCount <= 1);
    if (ownWindows && allDistinct(frames)) {
        return BarKind::perItemWindows;
    }
    const bool looksHosted = frames.empty() || allShareOneFrame(frames);
    const bool confirmed =
        observation.osMajorVersion >= kFirstHostedMacOS || observation.menuBarHostRunning;
    return looksHosted && confirmed ? BarKind::hosted : BarKind::unknown;
}

BarObservation observeBar(const WindowListSource& windows, Pid ownPID, int osMajorVersion,
                          bool menuBarHostRunning, std::size_t ownItemCount) {
    BarObservation observation{osMajorVersion, menuBarHostRunning, {}, ownItemCount};
    windows.visitWindowList([&](const WindowRecord& record) {
        auto layer = readInteger(record.value(WindowKey::layer));
        if (!layer || *layer < kMinItemLayer || *layer > kMaxItemLayer ||
            !isOwnWindow(record, ownPID)) {
            return;
        }
        if (auto frame = readRect(record.value(WindowKey::bounds))) {
            observation.ownItemWindowFrames.push_back(*frame);
        }
    });
    return observation;
}

} // namespace quillet
