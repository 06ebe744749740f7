#include "core/prefs/AppPreferences.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quillet {
namespace {

using nlohmann::json;
using testing::storedJSON;

TEST(AppPreferences, FreshInstallStartsFromTheDefaultsWithoutWriting) {
    sim::MemoryKeyValueStore store;
    AppPreferences prefs(store);
    EXPECT_TRUE(prefs.autoRehide());
    EXPECT_FALSE(prefs.collapseAtLaunch());
    EXPECT_EQ(prefs.hotKey(), HotKeyOption::cmdShiftB);
    EXPECT_EQ(prefs.spacerCount(), 0);
    EXPECT_EQ(prefs.activeProfile(), "");
    EXPECT_TRUE(prefs.profiles().empty());
    EXPECT_TRUE(prefs.sectionByBundleID().empty());
    EXPECT_TRUE(store.contents().empty());
}

TEST(AppPreferences, EveryAssignmentIsWrittenThroughUnderItsKey) {
    sim::MemoryKeyValueStore store;
    AppPreferences prefs(store);
    prefs.setAutoRehide(false);
    prefs.setCollapseAtLaunch(true);
    prefs.setHotKey(HotKeyOption::controlOptionB);
    prefs.setSpacerCount(-4); // unclamped: the spacer manager clamps
    prefs.setActiveProfile("");
    prefs.setProfiles({{"Work", {{"com.a", MenuBarSection::alwaysHidden}}}, {"Empty", {}}});
    prefs.setSectionByBundleID(
        {{"com.a", MenuBarSection::dynamic}, {"sys:Clock", MenuBarSection::hidden}});

    const std::map<std::string, StoredValue> expected{
        {"quillet.autoRehideOnOutsideClick", StoredValue{false}},
        {"quillet.collapsedAtLaunch", StoredValue{true}},
        {"quillet.hotKey", StoredValue{std::string("controlOptionB")}},
        {"quillet.spacerCount", StoredValue{std::int64_t{-4}}},
        {"quillet.activeProfile", StoredValue{std::string()}},
        {"quillet.profiles", store.value("quillet.profiles")},
        {"quillet.sectionRules", store.value("quillet.sectionRules")}};
    EXPECT_EQ(store.contents(), expected);
    EXPECT_EQ(storedJSON(store, "quillet.profiles"),
              json::parse(R"({"Work":{"com.a":"alwaysHidden"},"Empty":{}})"));
    EXPECT_EQ(storedJSON(store, "quillet.sectionRules"),
              json::parse(R"({"com.a":"dynamic","sys:Clock":"hidden"})"));
}

TEST(AppPreferences, SettingASectionInsertsOrReplacesAndKeepsVisibleExplicit) {
    sim::MemoryKeyValueStore store;
    AppPreferences prefs(store);
    prefs.setSection(MenuBarSection::hidden, "com.a");
    prefs.setSection(MenuBarSection::dynamic, "com.b");
    prefs.setSection(MenuBarSection::visible, "com.a");
    EXPECT_EQ(prefs.sectionByBundleID(), (SectionRules{{"com.a", MenuBarSection::visible},
                                                       {"com.b", MenuBarSection::dynamic}}));
    EXPECT_EQ(storedJSON(store, "quillet.sectionRules"),
              json::parse(R"({"com.a":"visible","com.b":"dynamic"})"));
}

TEST(AppPreferences, ChangesAreAnnouncedBeforeTheyAreStoredAndWritten) {
    sim::MemoryKeyValueStore store;
    AppPreferences prefs(store);
    std::vector<std::string> events;
    Subscription willChange = prefs.objectWillChange().subscribe(
        [&] { events.push_back("will change, holding " + std::string(rawValue(prefs.hotKey()))); });
    Subscription hotKey = prefs.hotKeyChanges().subscribe([&](const HotKeyOption& option) {
        const StoredValue stored = store.value("quillet.hotKey");
        events.push_back(std::string(rawValue(option)) + " announced, holding " +
                         std::string(rawValue(prefs.hotKey())) + ", stored " +
                         (stored.isAbsent() ? "nothing" : std::get<std::string>(stored.content)));
    });
    prefs.setHotKey(HotKeyOption::cmdShiftM);
    prefs.setHotKey(HotKeyOption::optionCmdB);

    EXPECT_EQ(events, (std::vector<std::string>{
                          "cmdShiftB announced, holding cmdShiftB, stored nothing",
                          "will change, holding cmdShiftB",
                          "cmdShiftM announced, holding cmdShiftB, stored nothing",
                          "will change, holding cmdShiftM",
                          "optionCmdB announced, holding cmdShiftM, stored cmdShiftM"}));
    EXPECT_EQ(prefs.hotKey(), HotKeyOption::optionCmdB);
    EXPECT_EQ(store.value("quillet.hotKey"), StoredValue{std::string("optionCmdB")});
}

// Settings written by one run are what the next run starts with, in memory as on disk.
class PreferencesAcrossLaunches : public ::testing::TestWithParam<bool> {
protected:
    bool onDisk() const { return GetParam(); }

    // The store as a new process would open it.
    KeyValueStore& relaunch() {
        if (!onDisk()) {
            return memory_;
        }
        file_ = std::make_unique<sim::FileKeyValueStore>(path_, log_);
        return *file_;
    }

    void SetUp() override { std::filesystem::remove(path_); }
    void TearDown() override { std::filesystem::remove(path_); }

    sim::SimulatedLog log_;

private:
    std::filesystem::path path_ = testing::scratchFile("preferences.json");
    sim::MemoryKeyValueStore memory_;
    std::unique_ptr<sim::FileKeyValueStore> file_;
};

TEST_P(PreferencesAcrossLaunches, EveryPropertyIsRestored) {
    {
        AppPreferences prefs(relaunch());
        prefs.setAutoRehide(false);
        prefs.setCollapseAtLaunch(true);
        prefs.setHotKey(HotKeyOption::cmdShiftM);
        prefs.setSpacerCount(std::numeric_limits<std::int64_t>::max());
        prefs.setSection(MenuBarSection::alwaysHidden, "com.a");
        prefs.setSection(MenuBarSection::visible, "sys:Clock");
        prefs.saveProfile("Work");
        prefs.setSection(MenuBarSection::dynamic, "com.b");
        prefs.saveProfile("Home ✓");
    }
    AppPreferences prefs(relaunch());
    EXPECT_FALSE(prefs.autoRehide());
    EXPECT_TRUE(prefs.collapseAtLaunch());
    EXPECT_EQ(prefs.hotKey(), HotKeyOption::cmdShiftM);
    EXPECT_EQ(prefs.spacerCount(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(prefs.activeProfile(), "Home ✓");
    const SectionRules work{{"com.a", MenuBarSection::alwaysHidden},
                            {"sys:Clock", MenuBarSection::visible}};
    SectionRules home = work;
    home["com.b"] = MenuBarSection::dynamic;
    EXPECT_EQ(prefs.sectionByBundleID(), home);
    EXPECT_EQ(prefs.profiles(), (Profiles{{"Work", work}, {"Home ✓", home}}));

    prefs.setAutoRehide(true);
    prefs.setActiveProfile("");
    AppPreferences again(relaunch());
    EXPECT_TRUE(again.autoRehide());
    EXPECT_EQ(again.activeProfile(), "");
    EXPECT_TRUE(log_.lines().empty());
}

INSTANTIATE_TEST_SUITE_P(Stores, PreferencesAcrossLaunches, ::testing::Values(false, true),
                         [](const auto& instance) { return instance.param ? "File" : "Memory"; });

} // namespace
} // namespace quillet
