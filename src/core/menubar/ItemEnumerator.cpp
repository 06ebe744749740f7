#include "core/menubar/ItemEnumerator.hpp"

#include "core/app/BundleIdentity.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/WindowValueReading.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/WindowListSource.hpp"
#include "core/support/Text.hpp"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace quillet {

namespace {

constexpr std::int64_t kMinItemLayer = 20;
constexpr std::int64_t kMaxItemLayer = 30;
constexpr double kMaxItemHeight = 44.0;
constexpr double kMaxItemWidth = 600.0;
// How far apart (in points) the window list's frame and AppKit's may be for one window.
constexpr double kSameWindowTolerance = 1.0;
// How far (in points) a window's centre may lie from the centre an application reports for its
// item and still be taken for the same item.
constexpr double kReportedMatchDistance = 16.0;

// Reads one window description into an item, or nothing when it cannot be a menu bar item.
// Layer and size are checked first, so most windows cost two lookups and no string.
std::optional<MenuBarItem> readItem(const WindowRecord& record, Pid ownPID) {
    auto layer = readInteger(record.value(WindowKey::layer));
    if (!layer || *layer < kMinItemLayer || *layer > kMaxItemLayer) {
        return std::nullopt;
    }
    auto frame = readRect(record.value(WindowKey::bounds));
    if (!frame || frame->height() > kMaxItemHeight || frame->width() <= 0.0 ||
        frame->width() > kMaxItemWidth) {
        return std::nullopt;
    }
    MenuBarItem item;
    item.layer = *layer;
    item.frame = *frame;
    item.ownerPID = readInt32(record.value(WindowKey::ownerPID)).value_or(0);
    item.windowID = readUInt32(record.value(WindowKey::number)).value_or(0);
    item.ownerName = readString(record.value(WindowKey::ownerName)).value_or("");
    auto name = readString(record.value(WindowKey::name));
    if (name && !name->empty()) {
        item.isOwnControlItem = isOwnItemName(*name);
        item.windowName = std::move(name);
    }
    item.isOwnControlItem = item.isOwnControlItem || item.ownerPID == ownPID;
    return item;
}

double distanceFromRightEdge(const MenuBarItem& item, const std::vector<Rect>& displays) {
    auto display = displayIndexContaining(displays, item.frame.center());
    const Rect& edge = display ? displays[*display] : item.frame;
    return edge.maxX() - item.frame.maxX();
}

struct Candidate {
    MenuBarItem item;
    double distance;
};

// Keeps the first candidate of each key, unless a later one has a bundle identifier that the
// stored one lacks. First-seen order is kept, so that equal distances sort the same way on
// every run.
class CandidateSet {
public:
    void offer(const std::string& key, Candidate candidate) {
        auto [slot, inserted] = index_.try_emplace(key, entries_.size());
        if (inserted) {
            entries_.push_back(std::move(candidate));
        } else if (!entries_[slot->second].item.bundleID && candidate.item.bundleID) {
            entries_[slot->second] = std::move(candidate);
        }
    }
    std::vector<Candidate>& entries() { return entries_; }

private:
    std::unordered_map<std::string, std::size_t> index_;
    std::vector<Candidate> entries_;
};

// The key under which logicalItems merges windows; nullopt for windows it leaves out.
std::optional<std::string> logicalKey(const MenuBarItem& item) {
    if (item.isOwnControlItem) {
        return std::nullopt;
    }
    if (item.bundleID) {
        if (isOwnItemName(*item.bundleID)) {
            return std::nullopt;
        }
        std::string id = *item.bundleID;
        removeAll(id, "-statusItem");
        return "b:" + id;
    }
    if (!item.windowName || item.windowName->starts_with("Item-") ||
        isOwnItemName(*item.windowName)) {
        return std::nullopt;
    }
    return "n:" + *item.windowName;
}

} // namespace

bool isOwnItemName(std::string_view name) {
    return name.starts_with(kOwnNamePrefix) || name == kBundleIdentifier;
}

std::optional<std::size_t> itemListedAt(const std::vector<MenuBarItem>& items, Rect frame) {
    auto edgeGap = [&](std::size_t i) { return std::abs(items[i].frame.maxX() - frame.maxX()); };
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (edgeGap(i) <= kSameWindowTolerance &&
            std::abs(items[i].frame.midY() - frame.midY()) <= kSameWindowTolerance &&
            (!best || edgeGap(i) < edgeGap(*best))) {
            best = i;
        }
    }
    return best;
}

std::optional<std::size_t> itemReportedAt(const std::vector<MenuBarItem>& items,
                                          const std::vector<Rect>& displays, Rect reported) {
    // Items pushed off the screen are on no display, and so is what their applications report.
    const auto display = displayIndexContaining(displays, reported.center());
    auto widthGap = [&](std::size_t i) {
        return std::abs(items[i].frame.width() - reported.width());
    };
    auto centreGap = [&](std::size_t i) {
        return std::abs(items[i].frame.midX() - reported.midX());
    };
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (displayIndexContaining(displays, items[i].frame.center()) != display ||
            !(centreGap(i) < kReportedMatchDistance)) {
            continue;
        }
        if (!best || widthGap(i) < widthGap(*best) ||
            (widthGap(i) == widthGap(*best) && centreGap(i) < centreGap(*best))) {
            best = i;
        }
    }
    return best;
}

std::optional<std::size_t> displayIndexContaining(const std::vector<Rect>& displays, Point point) {
    for (std::size_t i = 0; i < displays.size(); ++i) {
        if (displays[i].contains(point)) {
            return i;
        }
    }
    return std::nullopt;
}

std::vector<MenuBarItem> ItemEnumerator::rawItems(Pid ownPID) const {
    std::vector<MenuBarItem> items;
    windows_.visitWindowList([&](const WindowRecord& record) {
        if (auto item = readItem(record, ownPID)) {
            identity_.resolve(*item);
            items.push_back(std::move(*item));
        }
    });
    markUntitledOwnItems(items);
    return items;
}

// Without the Screen Recording grant the window list of macOS 26 names no status item and gives
// Control Center as the owner of every one, ours included; where AppKit put our items then tells
// them apart and names them, so that no listing offers our separators or the toggle as another
// application's items, and every lookup of a border by name finds it. With every window titled
// there is nothing to ask.
void ItemEnumerator::markUntitledOwnItems(std::vector<MenuBarItem>& items) const {
    if (!ownItems_ || std::ranges::all_of(items, [](const MenuBarItem& item) {
            return item.windowName.has_value();
        })) {
        return;
    }
    for (const OwnItemFrame& own : ownItems_()) {
        if (const auto listed = itemListedAt(items, own.frame)) {
            items[*listed].isOwnControlItem = true;
            if (!items[*listed].windowName) {
                items[*listed].windowName = own.autosaveName;
            }
        }
    }
}

std::vector<MenuBarItem> ItemEnumerator::mainDisplayItems(Pid ownPID) const {
    return mainDisplayItems(rawItems(ownPID));
}

std::vector<MenuBarItem> ItemEnumerator::mainDisplayItems(std::vector<MenuBarItem> items) const {
    const Rect main = displays_.mainDisplayBounds();
    std::erase_if(items,
                  [&](const MenuBarItem& item) { return !main.contains(item.frame.center()); });
    std::stable_sort(items.begin(), items.end(), [](const MenuBarItem& a, const MenuBarItem& b) {
        return a.frame.maxX() < b.frame.maxX();
    });
    return items;
}

void ItemEnumerator::nameUntitledByAccessibility(std::vector<MenuBarItem>& items,
                                                 const AXResolver& reporter, Pid ownPID) const {
    if (std::ranges::all_of(items, [](const MenuBarItem& item) {
            return item.windowName.has_value() || item.isOwnControlItem;
        })) {
        return;
    }
    const auto displays = activeDisplayBounds();
    for (const ReportedItem& reported : reporter.reportedItems(ownPID)) {
        const auto found = itemReportedAt(items, displays, reported.frame);
        if (!found || items[*found].windowName || items[*found].isOwnControlItem) {
            continue;
        }
        identity_.resolveAsApplication(items[*found], reported.bundleID, reported.applicationName);
    }
}

std::vector<Rect> ItemEnumerator::activeDisplayBounds() const {
    const std::uint32_t count = displays_.activeDisplayCount();
    if (count == 0) {
        return {};
    }
    // The list may have changed between the two questions; trust the shorter answer.
    const auto ids = displays_.activeDisplays(count);
    std::vector<Rect> bounds;
    for (std::size_t i = 0; i < std::min<std::size_t>(ids.size(), count); ++i) {
        bounds.push_back(displays_.displayBounds(ids[i]));
    }
    return bounds;
}

std::vector<MenuBarItem> ItemEnumerator::logicalItems(Pid ownPID) const {
    return logicalItems(rawItems(ownPID));
}

std::vector<MenuBarItem> ItemEnumerator::logicalItems(std::vector<MenuBarItem> raw) const {
    const auto displays = activeDisplayBounds();
    CandidateSet byKey;
    for (auto& item : raw) {
        if (auto key = logicalKey(item)) {
            double distance = distanceFromRightEdge(item, displays);
            byKey.offer(*key, {std::move(item), distance});
        }
    }
    // Windows that show the same name are one item to the user, whatever their keys.
    CandidateSet byLabel;
    for (auto& candidate : byKey.entries()) {
        std::string label = lowercased(candidate.item.displayLabel);
        byLabel.offer(label, std::move(candidate));
    }
    auto& survivors = byLabel.entries();
    std::stable_sort(
        survivors.begin(), survivors.end(),
        [](const Candidate& a, const Candidate& b) { return a.distance > b.distance; });
    std::vector<MenuBarItem> items;
    items.reserve(survivors.size());
    for (auto& candidate : survivors) {
        items.push_back(std::move(candidate.item));
    }
    return items;
}

} // namespace quillet
