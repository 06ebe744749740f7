// The hosted menu bar of macOS 27, where one system process lays out every status item and shows
// where they are only through Accessibility. Quillet cannot move another application's item
// there (drags posted at an item take over the pointer and move nothing), and a long separator
// is dropped from the bar rather than clamped. So on that bar our separators stay under the
// length it accepts, as many as it takes share the length, and what only the user can do is
// asked of them, once.

#include "core/engine/ControlItemManager.hpp"

#include "core/engine/HostedLengths.hpp"
#include "core/engine/HostedNotices.hpp"
#include "core/engine/RuleKey.hpp"
#include "core/engine/VisibleItemEnforcer.hpp"
#include "core/menubar/IdentityResolver.hpp"
#include "core/menubar/ScreenCoordinates.hpp"
#include "core/ports/DisplayGeometry.hpp"
#include "core/ports/LogSink.hpp"
#include "core/prefs/AppPreferences.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

namespace quillet {

namespace {

// Positions lag after a change: two reads this far apart that agree are trusted.
constexpr Duration kHostedLookInterval = std::chrono::milliseconds(150);
constexpr int kMaxHostedLooks = 10;
// How far a slot's reported width may stray from the length we gave the item.
constexpr double kWidthTolerance = 1.0;

} // namespace

BarKind ControlItemManager::observeBarKind() const {
    const bool hostRunning =
        !deps_.workspace.runningProcesses(std::string(kMenuBarHostBundleID)).empty();
    return detectBarKind(observeBar(deps_.windows, deps_.ownPID, deps_.osMajorVersion, hostRunning,
                                    3 + extraSeparators_.size()));
}

void ControlItemManager::updateBarKind() {
    const BarKind kind = observeBarKind();
    const bool changed = kind != barKind_;
    barKind_ = kind;
    if (kind != BarKind::perItemWindows) {
        observeDisplays();
    }
    if (changed && kind == BarKind::hosted) {
        deps_.log.log(
            "Quillet: the system hosts the menu bar: no item can be moved, and Quillet's "
            "separators stay at most " +
            std::to_string(static_cast<int>(hostedLengthLimit(enumerator_.activeDisplayBounds()))) +
            " pt long");
    }
    // Another display may be narrower: nothing of ours stays longer than the bar accepts.
    if (changed || kind == BarKind::hosted) {
        applySeparatorLengths();
        applyAlwaysSeparatorLength();
    }
    // Shorter or not, the lengths must still hide what the bar claims is hidden.
    if (kind == BarKind::hosted && !isExpanded_) {
        checkCollapse(HiddenNeighbour{});
    }
}

std::optional<std::vector<HostedItem>>
ControlItemManager::readHostedBar(std::size_t displayIndex) const {
    auto items = deps_.menuBarHost.hostedItems(AXResolver::kMessagingTimeout);
    if (!items) {
        return std::nullopt;
    }
    // What sits in the overflow has no place on the bar.
    std::erase_if(*items, [&](const HostedItem& item) {
        return item.displayIndex != displayIndex || !item.frame;
    });
    std::ranges::sort(*items, {}, [](const HostedItem& item) { return item.frame->minX(); });
    return items;
}

std::vector<HostedItem> ControlItemManager::hostedBar(std::size_t displayIndex) const {
    return readHostedBar(displayIndex).value_or(std::vector<HostedItem>{});
}

// The host may answer the first question after a change with the frames it had before it; a
// decision taken at once (a collapse asked for) asks twice and goes by the second answer.
std::vector<HostedItem> ControlItemManager::currentHostedBar() const {
    hostedBar();
    return hostedBar();
}

std::optional<std::size_t>
ControlItemManager::hostedSeparatorIndex(const std::vector<HostedItem>& bar) const {
    const double length = isExpanded_ ? kHostedSeparatorLength : collapsedLength();
    for (std::size_t i = 0; i < bar.size(); ++i) {
        const HostedItem& item = bar[i];
        // Named, if the host ever names our items; else by its length, the leftmost of the
        // collapsed separators, which all share one.
        if (item.owner == deps_.ownPID &&
            (item.identifier == kSeparatorName ||
             (item.identifier.empty() &&
              std::abs(item.frame->width() - length) <= kWidthTolerance))) {
            return i;
        }
    }
    return std::nullopt;
}

std::set<std::size_t>
ControlItemManager::placedExtraSeparators(const std::vector<HostedItem>& bar) const {
    const auto separator = hostedSeparatorIndex(bar);
    std::set<std::size_t> placed;
    // Only those right beside the separator push the hidden section with it; each is told apart
    // by its expanded length.
    for (std::size_t i = separator ? *separator + 1 : bar.size(); i < bar.size(); ++i) {
        if (bar[i].owner != deps_.ownPID) {
            break;
        }
        // Collapsed, those pushing already have the separator's length.
        const double width = bar[i].frame->width();
        if (!isExpanded_ && std::abs(width - collapsedLength()) <= kWidthTolerance) {
            continue;
        }
        const auto extra = extraSeparatorWithLength(width);
        if (!extra) {
            break;
        }
        placed.insert(*extra);
    }
    return placed;
}

// The reading the collapse went by may have been an old one: extras that the user has put
// beside the separator since join the push as soon as a look finds them there.
bool ControlItemManager::adoptPlacedExtras() {
    if (barKind_ != BarKind::hosted || isExpanded_ || extraSeparators_.empty()) {
        return false;
    }
    const std::size_t before = placedExtras_.size();
    placedExtras_.merge(placedExtraSeparators(hostedBar()));
    if (placedExtras_.size() == before) {
        return false;
    }
    applySeparatorLengths();
    return true;
}

std::optional<std::size_t> ControlItemManager::extraSeparatorWithLength(double width) const {
    for (std::size_t i = 0; i < extraSeparators_.size(); ++i) {
        if (std::abs(width - extraSeparatorLength(i)) <= kWidthTolerance / 2) {
            return i;
        }
    }
    return std::nullopt;
}

double ControlItemManager::extraSeparatorLength(std::size_t index) {
    return kFirstExtraSeparatorLength + static_cast<double>(index);
}

double ControlItemManager::collapsedLength() const {
    if (barKind_ != BarKind::hosted) {
        return kHidingLength;
    }
    return hostedSharedLength(enumerator_.activeDisplayBounds(), 1 + placedExtras_.size());
}

// Made where the bar puts new items, at the left end, in view; the user drags them beside the
// separator once and the bar keeps them there. Never removed while Quillet runs: the bar forgets
// where a removed item was.
bool ControlItemManager::addExtraSeparators() {
    const std::size_t needed = hostedSeparatorsNeeded(enumerator_.activeDisplayBounds());
    bool added = false;
    while (1 + extraSeparators_.size() < needed) {
        auto extra = ownItems_.createStatusItem(extraSeparatorLength(extraSeparators_.size()));
        extra->setAutosaveName(std::string(kSeparatorName) + "." +
                               std::to_string(extraSeparators_.size() + 2));
        if (extra->hasButton()) {
            extra->setToolTip("Quillet — Command-drag this just right of ••• once");
        }
        extraSeparators_.push_back(std::move(extra));
        added = true;
    }
    applySeparatorLengths();
    return added;
}

// Every display has its own bar, and the separators' one length reaches across each: the hidden
// section must have left all of them.
std::optional<ControlItemManager::StillShown> ControlItemManager::hostedStillShown() const {
    const std::size_t displays = enumerator_.activeDisplayBounds().size();
    for (std::size_t display = 0; display < displays; ++display) {
        const auto read = readHostedBar(display);
        // Without Accessibility (or an answer) nothing can confirm the collapse.
        if (!read) {
            return StillShown{"Quillet cannot read the menu bar (it needs Accessibility for "
                              "that here), so nothing hidden can be confirmed",
                              Rect{}, false};
        }
        const auto& bar = *read;
        const auto separator = hostedSeparatorIndex(bar);
        // Elsewhere than on the main display the separator may sit in the overflow with all
        // that is left of it; missing from the main display's bar, it was dropped.
        if (!separator && display > 0) {
            continue;
        }
        if (!separator) {
            return StillShown{
                "Quillet's separator left the menu bar (into the overflow, or dropped "
                "by the system)",
                Rect{}, false};
        }
        for (std::size_t i = *separator; i-- > 0;) {
            if (bar[i].owner != deps_.ownPID) {
                return StillShown{nameOf(bar[i]) + " stayed in the menu bar instead of going into "
                                                   "the overflow",
                                  *bar[i].frame, true};
            }
        }
    }
    return std::nullopt;
}

// The host names none of our items, but the toggle is one of ours that takes room and is not a
// separator: when none such stands right of the separator, the toggle is left of it and a
// collapse would push it into the overflow with the hidden items.
bool ControlItemManager::hostedCollapseKeepsToggle(const std::vector<HostedItem>& bar) const {
    const auto separator = hostedSeparatorIndex(bar);
    if (!separator) {
        return true;
    }
    return std::any_of(bar.begin() + static_cast<std::ptrdiff_t>(*separator) + 1, bar.end(),
                       [&](const HostedItem& item) { return mayBeHostedToggle(item); });
}

bool ControlItemManager::mayBeHostedToggle(const HostedItem& item) const {
    return item.owner == deps_.ownPID && item.frame && item.frame->width() > 0 &&
           !extraSeparatorWithLength(item.frame->width()) &&
           std::abs(item.frame->width() - collapsedLength()) > kWidthTolerance;
}

// On the hosted bar our toggle's own frame is a placeholder, so the host's tree is asked; only
// for clicks in a menu bar, since every click anywhere reaches the monitors.
bool ControlItemManager::isOnToggle(Point appKit) const {
    if (barKind_ != BarKind::hosted) {
        const auto frame = toggleItem_->windowFrame();
        return frame && frame->contains(appKit);
    }
    if (!isInAMenuBar(deps_.displays.screens(), deps_.displays.statusBarThickness(), appKit)) {
        return false;
    }
    const auto point = windowServerPoint(deps_.displays, appKit);
    if (!point) {
        return false;
    }
    const auto items = deps_.menuBarHost.hostedItems(AXResolver::kMessagingTimeout);
    return items && std::any_of(items->begin(), items->end(), [&](const HostedItem& item) {
               return mayBeHostedToggle(item) && item.frame->contains(*point);
           });
}

std::string ControlItemManager::nameOf(const HostedItem& item) const {
    const auto application = deps_.workspace.runningApplication(item.owner);
    if (application && !application->name.empty()) {
        return application->name;
    }
    return item.identifier.empty() ? "an item of process " + std::to_string(item.owner)
                                   : item.identifier;
}

std::string ControlItemManager::applicationName(const std::string& key) const {
    return IdentityResolver(deps_.workspace).appDisplayName(key).value_or(key);
}

// What the rules ask that only the user can do on this bar: Hide and Auto items must stand left
// of the separator (a user's own Command-drag moves them, and the bar remembers it), and Always
// hidden is the system's own per-app switch.
void ControlItemManager::reviewHostedRules(const std::vector<HostedItem>& bar) {
    const auto separator = hostedSeparatorIndex(bar);
    std::vector<std::string> toDrag;
    std::vector<std::string> alwaysHidden;
    for (const auto& [key, section] : deps_.preferences.sectionByBundleID()) {
        if (section == MenuBarSection::alwaysHidden) {
            alwaysHidden.push_back(applicationName(key));
        }
        if ((section != MenuBarSection::hidden && section != MenuBarSection::dynamic) ||
            !separator) {
            continue;
        }
        const auto pids = deps_.workspace.runningProcesses(key);
        const bool rightOfSeparator =
            std::any_of(bar.begin() + static_cast<std::ptrdiff_t>(*separator) + 1, bar.end(),
                        [&](const HostedItem& item) {
                            return std::ranges::find(pids, item.owner) != pids.end();
                        });
        if (rightOfSeparator) {
            toDrag.push_back(applicationName(key));
        }
    }
    if (separator && !hostedCollapseKeepsToggle(bar)) {
        deps_.notices.post(HostedNotices::toggleLeftOfSeparator());
    }
    if (!toDrag.empty()) {
        deps_.notices.post(HostedNotices::dragLeftOfSeparator(toDrag));
    }
    if (!alwaysHidden.empty()) {
        deps_.notices.post(HostedNotices::allowInMenuBar(alwaysHidden));
    }
}

// What stands for the arrangement on the hosted bar, where nothing can be dragged: the user is
// told what only they can do, and the bar collapses as it would after an arrangement.
Task<> ControlItemManager::hostedArrangement(bool nothingToHide) {
    reviewHostedRules(co_await settledHostedBar());
    deps_.enforcer.seedFromCurrentItems();
    setAllRevealed((nothingToHide && !deps_.preferences.collapseAtLaunch()) ||
                   !collapseKeepsToggle());
    if (deps_.arranged) {
        deps_.arranged();
    }
}

// The host's frames lag after a change (and are missing at the first read): a reading is
// trusted once two of them a moment apart agree.
Task<std::vector<HostedItem>> ControlItemManager::settledHostedBar() {
    auto bar = hostedBar();
    for (int look = 1; look < kMaxHostedLooks; ++look) {
        co_await sleep(deps_.scheduler, kHostedLookInterval);
        auto again = hostedBar();
        if (again == bar) {
            break;
        }
        bar = std::move(again);
    }
    co_return bar;
}

Task<> ControlItemManager::hostedReviewJob() {
    reviewHostedRules(co_await settledHostedBar());
}

// Auto, on a bar where its items cannot be moved: the whole hidden section shows while the
// application is in front, and hides again when it leaves, unless the user has used the toggle
// meanwhile.
void ControlItemManager::hostedEnforce(const std::optional<std::string>& ruleKey,
                                       MenuBarSection section) {
    // A rule that changed may ask something of the user.
    enqueueLayout([self = shared_from_this()] { return self->hostedReviewJob(); });
    const bool isAuto = ruleKey && ruledSection(deps_.preferences.sectionByBundleID(), ruleKey) ==
                                       MenuBarSection::dynamic;
    if (!isAuto) {
        return;
    }
    if (section == MenuBarSection::visible && !isExpanded_) {
        requestExpanded(true);
        autoRevealed_ = true;
    } else if (section != MenuBarSection::visible && std::exchange(autoRevealed_, false)) {
        requestExpanded(false);
    }
}

} // namespace quillet
