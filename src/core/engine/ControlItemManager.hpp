#pragma once

#include "core/engine/ItemMover.hpp"
#include "core/engine/OwnStatusItems.hpp"
#include "core/engine/PostEventAccessWatch.hpp"
#include "core/engine/ToggleClickWatch.hpp"
#include "core/menubar/AXResolver.hpp"
#include "core/menubar/BarKind.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "core/menubar/MenuBarItem.hpp"
#include "core/ports/MenuBarHostReader.hpp"
#include "core/ports/StatusBarHost.hpp"
#include "core/ports/Workspace.hpp"
#include "core/prefs/MenuBarSection.hpp"
#include "core/support/Task.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet {

class AccessibilityReader;
class AppPreferences;
class DisplayGeometry;
class InputInjector;
class LaunchAtLogin;
class LogSink;
class Notices;
class PointerMonitor;
class Scheduler;
class VisibleItemEnforcer;
class WindowListSource;
class Workspace;

// Owns Quillet's three control items, the status items that mark the zone borders: from left to
// right the always-hidden separator, the separator and the toggle. Hiding is nothing but giving
// a separator a length far wider than any display, which pushes everything to its left off the
// screen. The manager also answers the toggle's clicks and menu, runs every rearrangement of
// the menu bar one at a time on its layout queue, and moves items between the zones (the
// arrangement lives in ControlItemManager+Arrangement.cpp and ControlItemManager+Placement.cpp,
// and what it does without the privacy grants in ControlItemManager+Permissions.cpp).
// Main thread only.
class ControlItemManager : public std::enable_shared_from_this<ControlItemManager> {
public:
    // Every reference must outlive the manager.
    struct Dependencies {
        Scheduler& scheduler;
        StatusBarHost& statusBar;
        const WindowListSource& windows;
        const DisplayGeometry& displays;
        // Also watched for the moment a missing Accessibility grant may have been given.
        Workspace& workspace;
        const AccessibilityReader& accessibility;
        // Where the items are on the hosted menu bar of macOS 27.
        const MenuBarHostReader& menuBarHost;
        InputInjector& input;
        LaunchAtLogin& launchAtLogin;
        const AppPreferences& preferences;
        // Seeded at the end of every full arrangement, so that what is there now is not new.
        VisibleItemEnforcer& enforcer;
        LogSink& log;
        // What Quillet could not do, told to the user once per run.
        Notices& notices;
        Pid ownPID = 0;
        // The major version of the running macOS, one clue to the kind of menu bar.
        int osMajorVersion = 0;
        // The settings window and keyboard navigation, supplied by the application's wiring.
        std::function<void()> openSettings;
        std::function<void()> startKeyboardNav;
        // Told at the end of every full arrangement, which has put every Auto item in the
        // hidden zone, so that whoever shows them for the front application can show them again.
        std::function<void()> arranged;
    };

    // Sets of rule keys, in a stable order.
    using RuleKeys = std::set<std::string>;
    // One rearrangement; it is started only once every earlier one has finished.
    using LayoutJob = std::function<Task<>()>;

    // Where an item is now: its window and the index of its display among the active displays.
    struct Resolved {
        WindowID windowID = 0;
        std::size_t displayIndex = 0;
        friend bool operator==(const Resolved&, const Resolved&) = default;
    };

    // Autosave names, which are also the titles of the control items' windows: the arrangement
    // finds the items by them, so they must never change.
    static constexpr std::string_view kAlwaysSeparatorName = "quillet.alwaysSeparator";
    static constexpr std::string_view kSeparatorName = "quillet.separator";
    static constexpr std::string_view kToggleName = "quillet.toggle";
    // Far wider than any display: everything left of a separator this long is off-screen.
    static constexpr double kHidingLength = 10000.0;
    // On the hosted bar, which names none of our items, lengths that no other item of ours has
    // tell the separator and the extra separators apart while the bar is expanded.
    static constexpr double kHostedSeparatorLength = 26.0;
    // The extra separators' lengths count up from here, one point apart, below any other of ours.
    static constexpr double kFirstExtraSeparatorLength = 8.0;

    // The application's wiring publishes the manager it owns to the services, from where other
    // subsystems reach it weakly.
    static std::shared_ptr<ControlItemManager> make(Dependencies dependencies);

    ControlItemManager(const ControlItemManager&) = delete;
    ControlItemManager& operator=(const ControlItemManager&) = delete;
    ~ControlItemManager();

    // The menu bar as last observed: at launch, at every full arrangement and whenever the
    // displays change (ControlItemManager+Hosted.cpp).
    BarKind barKind() const { return barKind_; }

    // Expand and collapse (ControlItemManager.cpp).
    bool isExpanded() const { return isExpanded_; }
    // Shows (true) or hides (false) the hidden zone; the always-hidden zone is left as it is.
    void setExpanded(bool expanded);
    // The user's own request (the toggle, the menu, the hot key): see requestExpanded.
    void toggle();
    // Shows or hides both zones.
    void setAllRevealed(bool revealed);

    // A user's request to show or hide the hidden zone (hot key, hover, click). While layout
    // work is queued or running the bar is that work's: collapsing it under a drag would push
    // the items being moved off the screen. The request then waits and is applied once the
    // queue is idle; of several, the last one wins (a toggle counts from the one before it).
    // A collapse is refused while the separator stands right of the toggle (no Accessibility
    // to put them in order yet): it would push the toggle itself off the bar.
    void requestExpanded(bool expanded);
    // True while a layout job is queued or running.
    bool isLayoutBusy() const { return queuedJobs_ > 0; }
    // True while one of our synthetic drags is under way: pointer events seen now are ours.
    bool isMovingItems() const { return movesInFlight_ > 0; }

    // Appends `job` to the serial layout queue: it starts once every job submitted before has
    // finished. Nothing is dropped or cancelled. A queued job keeps the manager alive until it
    // has run.
    void enqueueLayout(LayoutJob job);

    // The toggle and its menu (ControlItemManager+Menu.cpp).
    // The toggle's action with the application's current event: a right click or a
    // Control-click opens the menu, any other click shows or hides the hidden zone.
    void toggleButtonClicked(std::optional<ButtonEvent> event);
    // From now on, the toggle's clicks are also taken from what event monitors see, for the bar
    // whose buttons do not report every click (see ToggleClickWatch).
    void watchToggleClicks(PointerMonitor& pointer);
    // The toggle's menu as it would open now; built anew on every opening.
    std::vector<MenuEntry> contextMenuEntries() const;
    void presentContextMenu();
    // Runs the menu entry whose action is `action` (one of the manager's own).
    void performMenuAction(std::string_view action);
    void toggleLaunchAtLogin();
    void openSettings();
    void startKeyboardNav();

    // Where AppKit has put each of our control items (AppKit coordinates), as far as it says.
    std::vector<std::optional<Rect>> controlItemFrames() const;
    // The window of one of our own control items on the main display.
    std::optional<MenuBarItem> ownItem(std::string_view autosaveName) const;

    // Zone arrangement (ControlItemManager+Arrangement.cpp). These enqueue themselves.
    // Restores the order of the control items, puts every ruled item into its zone, brings
    // wrongly hidden items back into view and collapses.
    void arrangeAndReapply(RuleKeys hidden, RuleKeys alwaysHidden);
    // Pulls newly appeared items into the visible zone.
    void showNewlyVisible(std::vector<MenuBarItem> items);
    // Puts one item into `section`.
    void enforce(const MenuBarItem& item, MenuBarSection section);
    // The same for the items of a rule key, found by the key or, failing that, by
    // `fallbackWID` (0 for none).
    void enforce(std::optional<std::string> ruleKey, WindowID fallbackWID, MenuBarSection section);

    // Checks every item's zone and repairs what is wrong: for items that appeared where no rule
    // put them (a relaunched application, an application's second item, an untitled item).
    void repairZones();

    // Steps of the jobs above, to be awaited from within a layout job
    // (ControlItemManager+Placement.cpp).
    Task<> place(std::optional<std::string> bundleID, WindowID fallbackWID, MenuBarSection section);
    Task<> placeMisplacedVisibleItems();
    std::optional<Resolved> resolve(const std::optional<std::string>& bundleID,
                                    WindowID fallbackWID) const;
    // The window of the control item named `name` on display `displayIndex`.
    std::optional<WindowID> controlWID(std::string_view name, std::size_t displayIndex) const;
    // The display under the pointer, as an index into `displays`.
    std::optional<std::size_t> cursorDisplayIndex(const std::vector<Rect>& displays) const;
    // Drags `item` to the `side` of `anchor` off the main thread; a drag that does not land is
    // logged and otherwise ignored. True when it landed.
    Task<bool> performMove(WindowID item, ItemMover::Side side, WindowID anchor);

    // Checking the result (ControlItemManager+Repair.cpp). The zone the rules give an item of
    // another application now, Auto resolved by the front application; none for items that are
    // not ours to move (our own, and protected system items).
    std::optional<MenuBarSection> zoneFor(const MenuBarItem& item,
                                          const std::optional<std::string>& key) const;
    // The items of the main display that are not in their zone, with the zone each belongs in.
    struct Misplaced {
        MenuBarItem item;
        MenuBarSection zone = MenuBarSection::visible;
        MenuBarSection current = MenuBarSection::visible;
    };
    std::vector<Misplaced> misplacedItems() const;
    // Whether the control items stand in their order on the main display, always-separator,
    // separator, toggle; true while any of them cannot be found, as nothing can be done then.
    bool controlItemsInOrder() const;

private:
    // Let the window server lay out the items that a change of length brought on or off screen.
    static constexpr Duration kSettleAfterRevealing = std::chrono::milliseconds(150);
    static constexpr Duration kSettleBeforePlacing = std::chrono::milliseconds(160);

    explicit ControlItemManager(Dependencies dependencies);
    void configureItems();
    void observeDisplays();
    void configureSeparator();
    void updateAppearance();
    void assertMainThread() const;

    static Task<> runAfter(TaskHandle previous, LayoutJob job,
                           std::weak_ptr<ControlItemManager> self);
    void layoutJobFinished();

    // One reading of the window list's item windows: on a Mac a copy of every window's
    // description, the costliest call of an arrangement, which the lookups of one stretch of code
    // share. The bar changes only under a move, a change of length or a turn of the main loop, so
    // a reading is never kept across an await: what comes after one reads the bar again.
    struct BarReading {
        std::vector<MenuBarItem> raw;
    };
    BarReading readBar() const;
    std::optional<Resolved> resolve(const std::optional<std::string>& bundleID,
                                    WindowID fallbackWID, const BarReading& bar) const;
    std::optional<WindowID> controlWID(std::string_view name, std::size_t displayIndex,
                                       const BarReading& bar) const;
    // The windows of our control items among the main display's items of one reading. Window
    // numbers outlast a move; frames do not, and are read again wherever they are compared.
    struct ControlWindows {
        std::optional<WindowID> alwaysSeparator;
        std::optional<WindowID> separator;
        std::optional<WindowID> toggle;
    };
    static ControlWindows controlWindows(const std::vector<MenuBarItem>& items);
    static std::optional<MenuBarItem> ownItemAmong(std::string_view autosaveName,
                                                   const std::vector<MenuBarItem>& items);

    Task<> arrangeJob(RuleKeys hidden, RuleKeys alwaysHidden);
    Task<> orderControlItems();
    Task<> orderSeparatorAndToggle(ControlWindows controls);
    MenuBarSection hiddenOrInFront(const std::string& key) const;
    void restoreBar(bool wasExpanded, bool wasAllRevealed);
    // Moves one window into `section` across `border`, the zone's border on its display.
    Task<> placeWindow(WindowID window, std::size_t displayIndex, MenuBarSection section,
                       std::optional<WindowID> border);
    // The window of the border an item crosses into `section` on display `displayIndex`.
    std::optional<WindowID> borderInto(MenuBarSection section, std::size_t displayIndex,
                                       const BarReading& bar) const;
    // Every window of the item named by `key` other than `placed`, on any display.
    std::vector<Resolved> otherWindowsOf(const std::string& key, WindowID placed) const;
    // The untitled windows among `items` that the running copies of the application `key`
    // report as their first items.
    std::vector<WindowID> untitledWindowsReportedFor(const std::string& key,
                                                     const std::vector<MenuBarItem>& items,
                                                     const std::vector<Rect>& displays) const;
    // From `from` on, the first of `items` ruled visible that stands left of its separator in
    // `bar`; the size of `items` when none does.
    std::size_t nextMisplacedVisible(const std::vector<MenuBarItem>& items, std::size_t from,
                                     const BarReading& bar) const;
    // Repairs (ControlItemManager+Repair.cpp).
    Task<> moveCaughtItemsOut();
    Task<> placeInHiddenZone(WindowID window);
    Task<> repairItem(const Misplaced& misplaced);
    Task<bool> checkAndRepair();
    // One reading's verdict: whether the control items stand in order, their windows, and, only
    // when they do, the items out of their zone.
    struct BarCheck {
        bool inOrder = true;
        ControlWindows controls;
        std::vector<Misplaced> misplaced;
    };
    BarCheck checkBar() const;
    // The items out of their zone, and the control items' order if it is wrong, by one reading.
    std::size_t problemsLeft() const;
    Task<> repairJob();
    void scheduleRepairRetry();
    static Task<> retryRepairAfterDelay(Scheduler& scheduler,
                                        std::weak_ptr<ControlItemManager> self);
    // `items` are the main display's items of `bar`, as mainDisplayItems reads them.
    std::vector<Misplaced> misplacedItems(const BarReading& bar,
                                          const std::vector<MenuBarItem>& items) const;
    std::map<WindowID, std::string> windowsNamedByRules(const std::vector<MenuBarItem>& items,
                                                        const BarReading& bar) const;
    std::map<std::string_view, Rect> controlFrames(const std::vector<MenuBarItem>& items) const;
    Task<> newlyVisibleJob(std::vector<MenuBarItem> items);
    Task<> enforceJob(std::optional<std::string> ruleKey, WindowID fallbackWID,
                      MenuBarSection section);
    std::optional<Rect> frameOf(WindowID window) const;

    // Working without the privacy grants (ControlItemManager+Permissions.cpp).
    // The items of the main display, left to right, with our control items marked as ours and
    // named by their autosave names even where the window list withholds their titles (the
    // enumerator knows them by where AppKit put them).
    std::vector<MenuBarItem> mainDisplayItems() const;
    std::vector<MenuBarItem> mainDisplayItems(const BarReading& bar) const;
    bool controlItemsInOrder(const std::vector<MenuBarItem>& items) const;
    // Whether the separator at its hiding length leaves the toggle on the screen: false only
    // when the separator is seen right of the toggle.
    bool collapseKeepsToggle() const;
    // Runs the arrangement last asked for again, once moves have become possible.
    void rearrangeAfterGrant();

    // Checking every collapse (ControlItemManager+Collapse.cpp): the item next to the separator
    // must have left the bar.
    struct HiddenNeighbour {
        std::string label;
        // On a bar of windows, its window, seen before the separator widened; 0 on the hosted
        // bar, where it is looked for afterwards.
        WindowID window = 0;
        // The display whose bar it was on.
        Rect display;
    };
    // What a look after a collapse found still in view, in words, and where.
    struct StillShown {
        std::string what;
        Rect frame;
        // Whether it was left where it stood for want of length, which more separators can give.
        bool shortOfLength = false;
        friend bool operator==(const StillShown&, const StillShown&) = default;
    };
    std::optional<HiddenNeighbour> hiddenNeighbour() const;
    static bool isOnBar(const Rect& frame, const Rect& display);
    std::optional<StillShown> stillShown(const HiddenNeighbour& neighbour) const;
    void checkCollapse(const HiddenNeighbour& neighbour);
    static Task<> checkCollapseLater(Scheduler& scheduler, std::weak_ptr<ControlItemManager> self,
                                     std::uint64_t collapse, HiddenNeighbour neighbour,
                                     StillShown seen);
    void collapseFailed(const StillShown& shown);
    // The lengths of the separators for the state the bar is in, and of the always-separator.
    void applySeparatorLengths();
    void applyAlwaysSeparatorLength();

    // The hosted menu bar (ControlItemManager+Hosted.cpp).
    BarKind observeBarKind() const;
    void updateBarKind();
    // One display's part of the hosted bar (the main display's unless told), left to right,
    // without what is in the overflow.
    std::vector<HostedItem> hostedBar(std::size_t displayIndex = 0) const;
    // The same, or nothing when the host cannot be read.
    std::optional<std::vector<HostedItem>> readHostedBar(std::size_t displayIndex) const;
    std::vector<HostedItem> currentHostedBar() const;
    // Where our separator is on the hosted bar, and how many extra separators stand right beside
    // it, where they push with it.
    std::optional<std::size_t> hostedSeparatorIndex(const std::vector<HostedItem>& bar) const;
    std::set<std::size_t> placedExtraSeparators(const std::vector<HostedItem>& bar) const;
    bool adoptPlacedExtras();
    // The extra separator of this expanded length, if any.
    std::optional<std::size_t> extraSeparatorWithLength(double width) const;
    static double extraSeparatorLength(std::size_t index);
    double collapsedLength() const;
    // Adds the separators the displays need; true when any was added.
    bool addExtraSeparators();
    // After a collapse on the hosted bar: the item next to the separator, if still in view.
    std::optional<StillShown> hostedStillShown() const;
    bool hostedCollapseKeepsToggle(const std::vector<HostedItem>& bar) const;
    // Whether a hosted item of ours is the toggle as far as the bar tells: one that takes room
    // and has none of the separators' lengths.
    bool mayBeHostedToggle(const HostedItem& item) const;
    // Whether a click at `appKit` (AppKit coordinates) is on the toggle.
    bool isOnToggle(Point appKit) const;
    std::string nameOf(const HostedItem& item) const;
    std::string applicationName(const std::string& key) const;
    // Tells the user what the rules need of them on this bar.
    void reviewHostedRules(const std::vector<HostedItem>& bar);
    Task<std::vector<HostedItem>> settledHostedBar();
    Task<> hostedReviewJob();
    void hostedEnforce(const std::optional<std::string>& ruleKey, MenuBarSection section);
    Task<> hostedArrangement(bool nothingToHide);

    Dependencies deps_;
    // Every status item the manager makes goes through it, so that each reading of the bar knows
    // our windows without their titles.
    OwnStatusItems ownItems_;
    ItemEnumerator enumerator_;
    AXResolver accessibilityFrames_;
    std::shared_ptr<StatusItem> alwaysSeparatorItem_;
    std::shared_ptr<StatusItem> separatorItem_;
    std::shared_ptr<StatusItem> toggleItem_;
    std::unique_ptr<ToggleClickWatch> toggleClicks_;
    bool isExpanded_ = true;
    // Whether the always-hidden zone is shown too.
    bool isAllRevealed_ = true;
    // The tail of the layout queue.
    TaskHandle layoutTask_;
    // The rule keys of the latest full arrangement, hidden and always-hidden.
    std::optional<std::pair<RuleKeys, RuleKeys>> lastArrangement_;
    PostEventAccessWatch moveAccess_;
    int queuedJobs_ = 0;
    int movesInFlight_ = 0;
    // A user's request that waits for the layout queue to be idle.
    std::optional<bool> pendingExpanded_;
    // Repairs tried again later, in a row, since the last time every item was in its zone.
    int repairRetries_ = 0;
    TaskHandle retryTask_;
    // Counts every change of the hidden zone's state, so that a check finds whether the collapse
    // it looks at still stands.
    std::uint64_t collapses_ = 0;
    TaskHandle collapseCheck_;
    BarKind barKind_ = BarKind::perItemWindows;
    // More separators for the hosted bar, made when one could not push the hidden section off it.
    std::vector<std::shared_ptr<StatusItem>> extraSeparators_;
    // How many of them stood beside the separator when the bar last collapsed.
    std::set<std::size_t> placedExtras_;
    // Whether an Auto application in front opened the bar, which closes again when it leaves.
    bool autoRevealed_ = false;
    std::optional<Workspace::ObserverToken> displayObserver_;
};

} // namespace quillet
