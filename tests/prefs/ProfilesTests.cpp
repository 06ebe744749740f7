#include "core/prefs/AppPreferences.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillet {
namespace {

using nlohmann::json;
using testing::storedJSON;

class ProfileOperations : public ::testing::Test {
protected:
    // Records which properties announce, in order, from now on.
    void recordAnnouncements() {
        tokens_.push_back(prefs.profilesChanges().subscribe(
            [this](const Profiles&) { announced.push_back("profiles"); }));
        tokens_.push_back(prefs.activeProfileChanges().subscribe(
            [this](const std::string& name) { announced.push_back("activeProfile=" + name); }));
        tokens_.push_back(prefs.sectionByBundleIDChanges().subscribe(
            [this](const SectionRules&) { announced.push_back("rules"); }));
        announced.clear();
    }

    sim::MemoryKeyValueStore store;
    AppPreferences prefs{store};
    std::vector<std::string> announced;

private:
    std::vector<Subscription> tokens_;
};

TEST_F(ProfileOperations, SavingCopiesTheRulesAndMakesTheProfileActive) {
    prefs.setSection(MenuBarSection::hidden, "com.a");
    recordAnnouncements();
    prefs.saveProfile("Work");
    EXPECT_EQ(announced, (std::vector<std::string>{"profiles", "activeProfile=Work"}));

    // Later rule changes neither alter the saved copy nor clear the active name.
    prefs.setSection(MenuBarSection::dynamic, "com.b");
    EXPECT_EQ(prefs.profiles().at("Work"), (SectionRules{{"com.a", MenuBarSection::hidden}}));
    EXPECT_EQ(prefs.activeProfile(), "Work");
    EXPECT_EQ(storedJSON(store, "quillet.profiles"), json::parse(R"({"Work":{"com.a":"hidden"}})"));
    EXPECT_EQ(store.value("quillet.activeProfile"), StoredValue{std::string("Work")});
}

TEST_F(ProfileOperations, SavingUnderTheSameNameAgainKeepsOneProfileWithTheNewRules) {
    prefs.setSection(MenuBarSection::hidden, "com.a");
    prefs.saveProfile("Work");
    prefs.setSection(MenuBarSection::alwaysHidden, "com.a");
    prefs.saveProfile("Work");
    EXPECT_EQ(prefs.profiles(), (Profiles{{"Work", {{"com.a", MenuBarSection::alwaysHidden}}}}));
}

TEST_F(ProfileOperations, AnEmptyNameIsIgnoredButOtherNamesAreTakenAsTheyAre) {
    recordAnnouncements();
    prefs.saveProfile("");
    EXPECT_TRUE(announced.empty());
    EXPECT_TRUE(store.contents().empty());

    prefs.saveProfile("work");
    prefs.saveProfile("Work");
    prefs.saveProfile(" Work\t"); // trimming is the settings pane's business
    EXPECT_EQ(prefs.profiles().size(), 3u);
}

TEST_F(ProfileOperations, SwitchingReplacesTheLiveRulesWhole) {
    prefs.setSection(MenuBarSection::hidden, "com.a");
    prefs.saveProfile("Work");
    prefs.setSection(MenuBarSection::dynamic, "com.new");
    prefs.setActiveProfile("");
    recordAnnouncements();

    prefs.switchProfile("Work");
    EXPECT_EQ(announced, (std::vector<std::string>{"rules", "activeProfile=Work"}));
    EXPECT_EQ(prefs.sectionByBundleID(), (SectionRules{{"com.a", MenuBarSection::hidden}}));
    EXPECT_EQ(storedJSON(store, "quillet.sectionRules"), json::parse(R"({"com.a":"hidden"})"));
    EXPECT_EQ(prefs.activeProfile(), "Work");
}

TEST_F(ProfileOperations, SwitchingToAnUnknownNameKeepsTheRulesAndClearsTheActiveName) {
    prefs.switchProfile("Nothing saved yet");
    EXPECT_EQ(prefs.activeProfile(), "");
    EXPECT_EQ(store.value("quillet.activeProfile"), StoredValue{std::string()});

    prefs.setSection(MenuBarSection::hidden, "com.a");
    prefs.saveProfile("Work");
    prefs.setSection(MenuBarSection::dynamic, "com.b");
    prefs.switchProfile("work");
    EXPECT_EQ(prefs.activeProfile(), "");
    EXPECT_EQ(prefs.sectionByBundleID().size(), 2u);
}

TEST_F(ProfileOperations, DeletingTheActiveProfileKeepsItsRulesInForce) {
    prefs.setSection(MenuBarSection::hidden, "com.a");
    prefs.saveProfile("Work");
    prefs.saveProfile("Home");
    prefs.switchProfile("Work");
    recordAnnouncements();

    prefs.deleteProfile("Work");
    EXPECT_EQ(announced, (std::vector<std::string>{"profiles", "activeProfile="}));
    EXPECT_EQ(prefs.activeProfile(), "");
    EXPECT_EQ(prefs.sectionByBundleID(), (SectionRules{{"com.a", MenuBarSection::hidden}}));
    EXPECT_EQ(storedJSON(store, "quillet.profiles"), json::parse(R"({"Home":{"com.a":"hidden"}})"));

    prefs.switchProfile("Home");
    announced.clear();
    prefs.deleteProfile("Work"); // another profile is active: only the profiles are rewritten
    EXPECT_EQ(announced, (std::vector<std::string>{"profiles"}));
    EXPECT_EQ(prefs.activeProfile(), "Home");
}

TEST_F(ProfileOperations, DeletingAnUnknownNameStillRewritesTheStoredProfiles) {
    store.put("quillet.profiles", testing::storedData("not json"));
    AppPreferences loaded(store);
    loaded.deleteProfile("Nobody");
    EXPECT_EQ(storedJSON(store, "quillet.profiles"), json::object());
    EXPECT_EQ(store.value("quillet.profiles.unreadable"), testing::storedData("not json"));
}

} // namespace
} // namespace quillet
