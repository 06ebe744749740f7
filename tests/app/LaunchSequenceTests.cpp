#include "core/app/AppDelegate.hpp"
#include "core/app/Services.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/app/SimulatedWorld.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

using Journal = std::vector<std::string>;

// Ports that write what Quillet asks of them into one journal, then pass it on to the simulated
// Mac, so that the order of a whole launch can be read back.
class JournalingApplication : public ApplicationShell {
public:
    JournalingApplication(ApplicationShell& next, Journal& journal)
        : next_(next), journal_(journal) {}
    void setActivationPolicy(ActivationPolicy policy) override {
        journal_.push_back(policy == ActivationPolicy::accessory ? "accessory policy" : "policy");
        next_.setActivationPolicy(policy);
    }
    void activateIgnoringOtherApps() override { next_.activateIgnoringOtherApps(); }
    void terminate() override { next_.terminate(); }

private:
    ApplicationShell& next_;
    Journal& journal_;
};

class JournalingStatusBar : public StatusBarHost {
public:
    JournalingStatusBar(StatusBarHost& next, Journal& journal) : next_(next), journal_(journal) {}
    std::shared_ptr<StatusItem> createStatusItem(double length) override {
        journal_.push_back(length == kVariableStatusItemLength
                               ? "status item"
                               : "status item " + std::to_string(int(length)));
        return next_.createStatusItem(length);
    }
    void removeStatusItem(const std::shared_ptr<StatusItem>& item) override {
        next_.removeStatusItem(item);
    }

private:
    StatusBarHost& next_;
    Journal& journal_;
};

class JournalingUpdater : public Updater {
public:
    JournalingUpdater(Updater& next, Journal& journal) : next_(next), journal_(journal) {}
    bool isAvailable() const override { return next_.isAvailable(); }
    void start() override {
        journal_.push_back("updater started");
        next_.start();
    }
    void checkForUpdates() override { next_.checkForUpdates(); }

private:
    Updater& next_;
    Journal& journal_;
};

class JournalingPointer : public PointerMonitor {
public:
    JournalingPointer(PointerMonitor& next, Journal& journal) : next_(next), journal_(journal) {}
    std::optional<Token> addGlobalMonitor(std::uint64_t mask, std::function<void()> h) override {
        journal_.push_back("global pointer monitor");
        return next_.addGlobalMonitor(mask, std::move(h));
    }
    std::optional<Token> addLocalMonitor(std::uint64_t mask, std::function<void()> h) override {
        journal_.push_back("local pointer monitor");
        return next_.addLocalMonitor(mask, std::move(h));
    }
    void removeMonitor(Token token) override { next_.removeMonitor(token); }

private:
    PointerMonitor& next_;
    Journal& journal_;
};

class JournalingHotKeys : public HotKeyRegistrar {
public:
    JournalingHotKeys(HotKeyRegistrar& next, Journal& journal) : next_(next), journal_(journal) {}
    std::optional<Handle> installEventHandler(EventTypeSpec type, Handler handler) override {
        journal_.push_back("hot key handler");
        return next_.installEventHandler(type, std::move(handler));
    }
    void removeEventHandler(Handle handler) override { next_.removeEventHandler(handler); }
    std::optional<Handle> registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              HotKeyID id, std::uint32_t options) override {
        journal_.push_back("hot key " + std::to_string(keyCode) + "/" + std::to_string(modifiers));
        return next_.registerEventHotKey(keyCode, modifiers, id, options);
    }
    void unregisterEventHotKey(Handle hotKey) override { next_.unregisterEventHotKey(hotKey); }

private:
    HotKeyRegistrar& next_;
    Journal& journal_;
};

class JournalingWorkspace : public Workspace {
public:
    JournalingWorkspace(Workspace& next, Journal& journal) : next_(next), journal_(journal) {}
    std::optional<std::string> applicationPath(const std::string& id) const override {
        return next_.applicationPath(id);
    }
    std::string displayName(const std::string& path) const override {
        return next_.displayName(path);
    }
    ImageRef icon(const std::string& path) const override { return next_.icon(path); }
    std::vector<Pid> runningProcesses(const std::string& id) const override {
        return next_.runningProcesses(id);
    }
    std::optional<RunningApplication> runningApplication(Pid pid) const override {
        return next_.runningApplication(pid);
    }
    std::optional<std::string> frontmostBundleID() const override {
        return next_.frontmostBundleID();
    }
    bool openURL(const std::string& url) override { return next_.openURL(url); }
    ObserverToken addObserver(WorkspaceEvent event, std::function<void()> handler) override {
        journal_.push_back(observing(event));
        return next_.addObserver(event, std::move(handler));
    }
    void removeObserver(ObserverToken token) override { next_.removeObserver(token); }

private:
    static std::string observing(WorkspaceEvent event) {
        switch (event) {
        case WorkspaceEvent::didLaunchApplication:
            return "observe launches";
        case WorkspaceEvent::didActivateApplication:
            return "observe activations";
        case WorkspaceEvent::didChangeScreenParameters:
            break;
        }
        return "observe display changes";
    }

    Workspace& next_;
    Journal& journal_;
};

// A launch with stored preferences (no hover, ⌘⇧M, two spacers) and both launch requests.
class LaunchSequence : public ::testing::Test {
protected:
    LaunchSequence() {
        AppPreferences stored(world.defaults);
        stored.setAutoRehide(false);
        stored.setHotKey(HotKeyOption::cmdShiftM);
        stored.setSpacerCount(2);
    }
    ~LaunchSequence() override { world.scheduler.runUntilIdle(); }

    PlatformPorts journalingPorts() {
        PlatformPorts ports = world.ports();
        return {.scheduler = ports.scheduler,
                .application = application,
                .process = ports.process,
                .windows = ports.windows,
                .displays = ports.displays,
                .workspace = workspace,
                .accessibility = ports.accessibility,
                .menuBarHost = ports.menuBarHost,
                .statusBar = statusBar,
                .input = ports.input,
                .hotKeys = hotKeys,
                .pointer = pointer,
                .defaults = ports.defaults,
                .loginItem = ports.loginItem,
                .updater = updater,
                .alerts = ports.alerts,
                .log = ports.log,
                .keys = ports.keys,
                .panels = ports.panels,
                .screenCapture = ports.screenCapture,
                .settingsWindows = ports.settingsWindows,
                .symbols = ports.symbols};
    }

    Journal journal;
    sim::SimulatedWorld world{{"Quillet", "--open-settings", "--nav-selftest"}};
    JournalingApplication application{world.application, journal};
    JournalingStatusBar statusBar{world.mac, journal};
    JournalingUpdater updater{world.updater, journal};
    JournalingPointer pointer{world.pointer, journal};
    JournalingHotKeys hotKeys{world.hotKeys, journal};
    JournalingWorkspace workspace{world.mac, journal};
    Services services{journalingPorts()};
    AppDelegate delegate{
        services,
        {.showSettings = [this] { journal.push_back("settings shown"); },
         .startKeyboardNav = {},
         .runNavigationSelfTest = [this] { journal.push_back("navigation self-test"); }}};
};

TEST_F(LaunchSequence, RunsInItsFixedOrderFromTheStoredPreferences) {
    delegate.applicationDidFinishLaunching();
    EXPECT_THAT(journal, ElementsAre("accessory policy", "status item", "status item",
                                     "status item", "updater started", "hot key handler",
                                     "hot key 46/768", "status item 22", "status item 22",
                                     "observe activations", "observe launches", "settings shown"));
    journal.clear();
    world.scheduler.advance(2s);
    EXPECT_THAT(journal, ElementsAre("navigation self-test"));
}

TEST_F(LaunchSequence, ReleasesTheTriggersAtQuit) {
    world.defaults.setBool("quillet.autoRehideOnOutsideClick", true);
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(world.pointer.monitorCount(), 2u);
    delegate.applicationWillTerminate();
    EXPECT_EQ(world.pointer.monitorCount(), 0u);
    EXPECT_EQ(world.hotKeys.registrationCount(), 0u);
    EXPECT_EQ(world.hotKeys.handlerCount(), 0u);
    EXPECT_EQ(world.mac.observerCount(), 0u);
}

} // namespace
} // namespace quillet
