#include "core/engine/ControlItemManager.hpp"

#include "core/ports/InputInjector.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/ports/Workspace.hpp"

#include <cassert>
#include <utility>

namespace quillet {

namespace {

// The toggle sends its action on left and right mouse-up (NSEvent masks are 1 << event type),
// so that a right click can open the menu instead of toggling.
constexpr std::uint64_t kToggleActionMask =
    (std::uint64_t{1} << static_cast<std::uint32_t>(MouseEventType::leftMouseUp)) |
    (std::uint64_t{1} << static_cast<std::uint32_t>(MouseEventType::rightMouseUp));

constexpr double kToggleSymbolPointSize = 18.0;

SymbolImage controlSymbol(const char* name) {
    SymbolImage image;
    image.symbolName = name;
    image.accessibilityDescription = "Quillet";
    image.isTemplate = true;
    return image;
}

// A status item without a button simply goes without an image.
void showImage(StatusItem& item, const std::optional<SymbolImage>& image) {
    if (item.hasButton()) {
        item.setImage(image);
    }
}

} // namespace

// The three items exist before anything is configured.
std::shared_ptr<ControlItemManager> ControlItemManager::make(Dependencies dependencies) {
    std::shared_ptr<ControlItemManager> manager(new ControlItemManager(std::move(dependencies)));
    manager->configureItems();
    manager->updateBarKind();
    return manager;
}

// Created in this order so that, where the system remembers no positions, they line up from
// left to right as the zones need them.
ControlItemManager::ControlItemManager(Dependencies dependencies)
    : deps_(std::move(dependencies)), ownItems_(deps_.statusBar, deps_.displays),
      enumerator_(deps_.windows, deps_.displays, deps_.workspace,
                  [this] { return ownItems_.windowServerFrames(); }),
      accessibilityFrames_(deps_.accessibility, deps_.workspace),
      alwaysSeparatorItem_(ownItems_.createStatusItem(kVariableStatusItemLength)),
      separatorItem_(ownItems_.createStatusItem(kVariableStatusItemLength)),
      toggleItem_(ownItems_.createStatusItem(kVariableStatusItemLength)),
      moveAccess_(deps_.input, deps_.workspace, deps_.log, [this] { rearrangeAfterGrant(); }) {
    assertMainThread();
}

ControlItemManager::~ControlItemManager() {
    if (displayObserver_) {
        deps_.workspace.removeObserver(*displayObserver_);
    }
}

// The kind of bar and the longest length it accepts follow the displays. Not needed on a bar of
// windows, where nothing of ours depends on the displays and no display makes the system host
// its bar.
void ControlItemManager::observeDisplays() {
    if (displayObserver_) {
        return;
    }
    displayObserver_ = deps_.workspace.addObserver(WorkspaceEvent::didChangeScreenParameters,
                                                   [weak = weak_from_this()] {
                                                       if (auto self = weak.lock()) {
                                                           self->updateBarKind();
                                                       }
                                                   });
}

void ControlItemManager::configureItems() {
    alwaysSeparatorItem_->setAutosaveName(std::string(kAlwaysSeparatorName));
    showImage(*alwaysSeparatorItem_, controlSymbol("minus"));
    configureSeparator();
    toggleItem_->setAutosaveName(std::string(kToggleName));
    if (toggleItem_->hasButton()) {
        // Weak: the status bar may keep the button, and its action, longer than the manager.
        toggleItem_->setAction(
            [weak = weak_from_this()](std::optional<ButtonEvent> event) {
                if (auto self = weak.lock()) {
                    self->toggleClicks_ ? self->toggleClicks_->buttonSent(event)
                                        : self->toggleButtonClicked(event);
                }
            },
            kToggleActionMask);
        toggleItem_->setToolTip("Quillet");
    }
    updateAppearance();
}

void ControlItemManager::configureSeparator() {
    separatorItem_->setAutosaveName(std::string(kSeparatorName));
    if (separatorItem_->hasButton()) {
        separatorItem_->setImage(controlSymbol("ellipsis"));
        separatorItem_->setToolTip("Quillet — drag icons to the LEFT of this to hide them");
    }
}

void ControlItemManager::updateAppearance() {
    SymbolImage chevron =
        controlSymbol(isExpanded_ ? "chevron.right.circle.fill" : "chevron.left.circle.fill");
    chevron.pointSize = kToggleSymbolPointSize;
    chevron.weight = SymbolWeight::black;
    showImage(*toggleItem_, chevron);
}

void ControlItemManager::setExpanded(bool expanded) {
    assertMainThread();
    // Seen before the separator widens, while it is still on the bar.
    const bool collapsing = !expanded && isExpanded_;
    const auto neighbour = collapsing ? hiddenNeighbour() : std::nullopt;
    if (collapsing && barKind_ == BarKind::hosted) {
        // Counted while the bar still shows their expanded lengths.
        placedExtras_ = placedExtraSeparators(currentHostedBar());
    }
    // A check under way goes on through lengths applied again to the same state.
    if (expanded != isExpanded_) {
        ++collapses_;
    }
    isExpanded_ = expanded;
    applySeparatorLengths();
    updateAppearance();
    if (neighbour) {
        checkCollapse(*neighbour);
    }
}

void ControlItemManager::toggle() {
    // The user's word outlasts what an application coming to the front opened.
    autoRevealed_ = false;
    requestExpanded(!pendingExpanded_.value_or(isExpanded_));
}

void ControlItemManager::requestExpanded(bool expanded) {
    assertMainThread();
    if (isLayoutBusy()) {
        pendingExpanded_ = expanded;
    } else if (expanded != isExpanded_ && (expanded || collapseKeepsToggle())) {
        setExpanded(expanded);
    }
}

void ControlItemManager::setAllRevealed(bool revealed) {
    setExpanded(revealed);
    isAllRevealed_ = revealed;
    applyAlwaysSeparatorLength();
}

void ControlItemManager::applySeparatorLengths() {
    if (isExpanded_) {
        separatorItem_->setLength(barKind_ == BarKind::hosted ? kHostedSeparatorLength
                                                              : kVariableStatusItemLength);
        showImage(*separatorItem_, controlSymbol("ellipsis"));
    } else {
        // The image goes first, so that the widened separator never shows it off to the left.
        showImage(*separatorItem_, std::nullopt);
        separatorItem_->setLength(collapsedLength());
    }
    // The extra separators beside the separator share its push; the others, and all of them
    // while expanded, are thin lines the user can find and drag.
    for (std::size_t i = 0; i < extraSeparators_.size(); ++i) {
        StatusItem& extra = *extraSeparators_[i];
        const bool pushing = !isExpanded_ && placedExtras_.contains(i);
        showImage(extra, pushing ? std::nullopt : std::optional(controlSymbol("poweron")));
        extra.setLength(pushing ? collapsedLength() : extraSeparatorLength(i));
    }
}

// The always-hidden zone cannot be hidden on the hosted bar: the longest length it accepts
// pushes the section a fraction of the way, and only the system's own switch keeps an
// application's item out of the bar there. Its border takes no room there, which also tells it
// apart from the toggle.
void ControlItemManager::applyAlwaysSeparatorLength() {
    if (barKind_ == BarKind::hosted) {
        showImage(*alwaysSeparatorItem_, std::nullopt);
        alwaysSeparatorItem_->setLength(0.0);
        return;
    }
    alwaysSeparatorItem_->setLength(isAllRevealed_ ? kVariableStatusItemLength : kHidingLength);
    showImage(*alwaysSeparatorItem_,
              isAllRevealed_ ? std::optional(controlSymbol("minus")) : std::nullopt);
}

void ControlItemManager::enqueueLayout(LayoutJob job) {
    assertMainThread();
    ++queuedJobs_;
    layoutTask_ =
        TaskHandle::spawn(deps_.scheduler, runAfter(layoutTask_, std::move(job), weak_from_this()));
}

// Each job holds the handle of the one before it, so a job waiting in line stays alive even
// though the manager keeps only the newest.
Task<> ControlItemManager::runAfter(TaskHandle previous, LayoutJob job,
                                    std::weak_ptr<ControlItemManager> self) {
    co_await previous;
    co_await job();
    if (auto manager = self.lock()) {
        manager->layoutJobFinished();
    }
}

void ControlItemManager::layoutJobFinished() {
    --queuedJobs_;
    if (queuedJobs_ == 0 && pendingExpanded_) {
        requestExpanded(*std::exchange(pendingExpanded_, std::nullopt));
    }
}

std::optional<MenuBarItem> ControlItemManager::ownItem(std::string_view autosaveName) const {
    return ownItemAmong(autosaveName, mainDisplayItems());
}

std::optional<MenuBarItem> ControlItemManager::ownItemAmong(std::string_view autosaveName,
                                                            const std::vector<MenuBarItem>& items) {
    for (const auto& item : items) {
        if (item.isOwnControlItem && item.windowName == autosaveName) {
            return item;
        }
    }
    return std::nullopt;
}

ControlItemManager::ControlWindows
ControlItemManager::controlWindows(const std::vector<MenuBarItem>& items) {
    auto windowOf = [&](std::string_view name) {
        const auto item = ownItemAmong(name, items);
        return item ? std::optional(item->windowID) : std::nullopt;
    };
    return {windowOf(kAlwaysSeparatorName), windowOf(kSeparatorName), windowOf(kToggleName)};
}

void ControlItemManager::assertMainThread() const {
    assert(deps_.scheduler.isMainThread() && "the control items are main-thread only");
}

} // namespace quillet
