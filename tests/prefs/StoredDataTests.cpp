#include "core/prefs/AppPreferences.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace quillet {
namespace {

using Limits = std::numeric_limits<std::int64_t>;
using testing::storedData;
using testing::storedText;

// Assigns the property stored under `key` its own current value, the user's "next change".
void reassign(AppPreferences& prefs, const std::string& key) {
    const std::map<std::string, std::function<void()>> assignments{
        {"quillet.autoRehideOnOutsideClick", [&] { prefs.setAutoRehide(prefs.autoRehide()); }},
        {"quillet.collapsedAtLaunch", [&] { prefs.setCollapseAtLaunch(prefs.collapseAtLaunch()); }},
        {"quillet.hotKey", [&] { prefs.setHotKey(prefs.hotKey()); }},
        {"quillet.spacerCount", [&] { prefs.setSpacerCount(prefs.spacerCount()); }},
        {"quillet.activeProfile", [&] { prefs.setActiveProfile(prefs.activeProfile()); }},
        {"quillet.profiles", [&] { prefs.setProfiles(prefs.profiles()); }},
        {"quillet.sectionRules", [&] { prefs.setSectionByBundleID(prefs.sectionByBundleID()); }}};
    assignments.at(key)();
}

void reassignAllBut(AppPreferences& prefs, const std::string& key) {
    for (const char* other : {"quillet.autoRehideOnOutsideClick", "quillet.collapsedAtLaunch",
                              "quillet.hotKey", "quillet.spacerCount", "quillet.activeProfile",
                              "quillet.profiles", "quillet.sectionRules"}) {
        if (other != key) {
            reassign(prefs, other);
        }
    }
}

// Whether `key` now holds what its property writes: a Boolean, a string, an integer, or a JSON
// object as data.
bool holdsOwnForm(const KeyValueStore& store, const std::string& key) {
    const StoredValue value = store.value(key);
    if (key == "quillet.autoRehideOnOutsideClick" || key == "quillet.collapsedAtLaunch") {
        return std::holds_alternative<bool>(value.content);
    }
    if (key == "quillet.hotKey" || key == "quillet.activeProfile") {
        return std::holds_alternative<std::string>(value.content);
    }
    if (key == "quillet.spacerCount") {
        return std::holds_alternative<std::int64_t>(value.content);
    }
    return testing::storedJSON(store, key).is_object();
}

struct StoredCase {
    std::string description;
    std::string key;
    StoredValue stored;
    std::function<void(const AppPreferences&)> expectLoaded;
    // Whether the stored document is kept under its backup key before it is first written over.
    bool keptAside = false;
};

std::vector<StoredCase> storedCases() {
    const SectionRules none;
    auto rules = [](SectionRules expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.sectionByBundleID(), expected); };
    };
    auto profiles = [](Profiles expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.profiles(), expected); };
    };
    auto autoRehide = [](bool expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.autoRehide(), expected); };
    };
    auto collapse = [](bool expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.collapseAtLaunch(), expected); };
    };
    auto hotKey = [](HotKeyOption expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.hotKey(), expected); };
    };
    auto spacers = [](std::int64_t expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.spacerCount(), expected); };
    };
    auto active = [](std::string expected) {
        return [expected](const AppPreferences& p) { EXPECT_EQ(p.activeProfile(), expected); };
    };
    const std::string rulesKey = "quillet.sectionRules";
    const std::string profilesKey = "quillet.profiles";
    return {
        {"rules: sections as written, nothing aside", rulesKey,
         storedData(R"({"a":"alwaysHidden","sys:Clock":"visible"})"),
         rules({{"a", MenuBarSection::alwaysHidden}, {"sys:Clock", MenuBarSection::visible}})},
        {"rules: matching is case-sensitive, one entry at a time", rulesKey,
         storedData(R"({"a":"hidden","b":"Hidden","c":"dynamic"})"),
         rules({{"a", MenuBarSection::hidden}, {"c", MenuBarSection::dynamic}}), true},
        {"rules: not JSON", rulesKey, storedData(R"({"a":"hidden")"), rules(none), true},
        {"rules: empty data", rulesKey, storedData(""), rules(none), true},
        {"rules: an array", rulesKey, storedData(R"(["hidden"])"), rules(none), true},
        {"rules: one value of another type spoils the document", rulesKey,
         storedData(R"({"a":"hidden","b":5})"), rules(none), true},
        {"rules: a profiles document", rulesKey, storedData(R"({"Work":{"a":"hidden"}})"),
         rules(none), true},
        {"rules: text after the document", rulesKey, storedData(R"({"a":"hidden"} x)"), rules(none),
         true},
        {"rules: not UTF-8", rulesKey, storedData("{\"a\xff\":\"hidden\"}"), rules(none), true},
        {"rules: stored as a string, not data", rulesKey, storedText(R"({"a":"hidden"})"),
         rules(none), true},
        {"rules: stored as a real", rulesKey, StoredValue{2.5}, rules(none), true},
        {"rules: nested past the bound of stored JSON", rulesKey,
         storedData(R"({"a":"hidden","b":)" + std::string(3000, '[') + std::string(3000, ']') +
                    "}"),
         rules(none), true},
        {"profiles: unknown sections dropped, an emptied profile kept", profilesKey,
         storedData(R"({"Work":{"a":"hidden","b":"bogus"},"Empty":{"x":"nope"}})"),
         profiles({{"Work", {{"a", MenuBarSection::hidden}}}, {"Empty", {}}}), true},
        {"profiles: a rules document", profilesKey, storedData(R"({"a":"hidden"})"), profiles({}),
         true},
        {"profiles: a rule of another type", profilesKey,
         storedData(R"({"Work":{"a":"hidden"},"Home":{"a":true}})"), profiles({}), true},
        {"profiles: not JSON", profilesKey, storedData(std::string_view("\x00\x01garbage", 9)),
         profiles({}), true},
        {"autoRehide: the number 0 is the Boolean false", "quillet.autoRehideOnOutsideClick",
         StoredValue{std::int64_t{0}}, autoRehide(false)},
        {"autoRehide: the real 0.0 is the Boolean false", "quillet.autoRehideOnOutsideClick",
         StoredValue{0.0}, autoRehide(false)},
        {"autoRehide: only 0 and 1 are Booleans (a two)", "quillet.autoRehideOnOutsideClick",
         StoredValue{std::int64_t{2}}, autoRehide(true)},
        {"autoRehide: only a Boolean counts (NO)", "quillet.autoRehideOnOutsideClick",
         storedText("NO"), autoRehide(true)},
        {"autoRehide: a stored false", "quillet.autoRehideOnOutsideClick", StoredValue{false},
         autoRehide(false)},
        {"collapseAtLaunch: read like boolForKey", "quillet.collapsedAtLaunch", storedText("YES"),
         collapse(true)},
        {"collapseAtLaunch: data reads false", "quillet.collapsedAtLaunch", storedData("1"),
         collapse(false)},
        {"hotKey: unknown string", "quillet.hotKey", storedText("CmdShiftM"),
         hotKey(HotKeyOption::cmdShiftB)},
        {"hotKey: not a string", "quillet.hotKey", StoredValue{std::int64_t{3}},
         hotKey(HotKeyOption::cmdShiftB)},
        {"spacerCount: huge", "quillet.spacerCount", StoredValue{Limits::max()},
         spacers(Limits::max())},
        {"spacerCount: negative", "quillet.spacerCount", StoredValue{std::int64_t{-3}},
         spacers(-3)},
        {"spacerCount: read like integerForKey", "quillet.spacerCount", storedText("12 spacers"),
         spacers(12)},
        {"activeProfile: a missing profile stays active", "quillet.activeProfile",
         storedText("Gone"), active("Gone")},
        {"activeProfile: not a string", "quillet.activeProfile", StoredValue{true}, active("")},
    };
}

TEST(StoredPreferences, OddStoredValuesLoadAsDefinedAndAreKeptWhenTheirPropertyIsAssigned) {
    for (const StoredCase& c : storedCases()) {
        SCOPED_TRACE(c.description);
        sim::MemoryKeyValueStore store;
        sim::SimulatedLog log;
        store.put(c.key, c.stored);
        AppPreferences prefs(store, &log);
        c.expectLoaded(prefs);

        reassignAllBut(prefs, c.key);
        EXPECT_EQ(store.value(c.key), c.stored) << "rewritten before its property was assigned";

        // A document that did not load whole is kept aside before it is first written over,
        // and stays there through later writes.
        const std::string backupKey = c.key + ".unreadable";
        reassign(prefs, c.key);
        reassign(prefs, c.key);
        EXPECT_TRUE(holdsOwnForm(store, c.key));
        EXPECT_EQ(store.value(backupKey), c.keptAside ? c.stored : StoredValue{});
        EXPECT_EQ(log.lines().size(), c.keptAside ? 1u : 0u);
        AppPreferences relaunched(store);
        c.expectLoaded(relaunched);
    }
}

TEST(StoredPreferences, RulesThatCannotBeEncodedLeaveTheStoredRulesAsTheyWere) {
    sim::MemoryKeyValueStore store;
    AppPreferences prefs(store);
    prefs.setSection(MenuBarSection::hidden, "com.a");
    const StoredValue before = store.value("quillet.sectionRules");

    prefs.setSection(MenuBarSection::dynamic, "com.\xff\xfe");
    EXPECT_EQ(prefs.sectionByBundleID().size(), 2u); // the live rules still take it
    EXPECT_EQ(store.value("quillet.sectionRules"), before);

    prefs.saveProfile("Broken");
    EXPECT_TRUE(store.value("quillet.profiles").isAbsent());
    EXPECT_EQ(store.value("quillet.activeProfile"), StoredValue{std::string("Broken")});
}

} // namespace
} // namespace quillet
