#include "core/prefs/AppPreferences.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quillet {
namespace {

using testing::storedText;

// What the user has set, as they would describe it; a fresh install holds the defaults.
struct Model {
    bool autoRehide = true;
    bool collapseAtLaunch = false;
    HotKeyOption hotKey = HotKeyOption::cmdShiftB;
    std::int64_t spacerCount = 0;
    std::string activeProfile;
    Profiles profiles;
    SectionRules rules;
};

// An odd value stored under one of Quillet's keys, what the setting reads as, and whether the
// value, a document that does not load whole, is kept aside before it is first written over.
struct OddValue {
    std::string key;
    StoredValue stored;
    std::function<void(Model&)> reads;
    bool keptAside = false;
};

std::vector<OddValue> oddValues() {
    const std::string rules = "quillet.sectionRules";
    const std::string profiles = "quillet.profiles";
    auto noRules = [](Model& m) { m.rules.clear(); };
    auto noProfiles = [](Model& m) { m.profiles.clear(); };
    auto hotKeyB = [](Model& m) { m.hotKey = HotKeyOption::cmdShiftB; };
    auto hover = [](bool on) { return [on](Model& m) { m.autoRehide = on; }; };
    auto collapse = [](bool on) { return [on](Model& m) { m.collapseAtLaunch = on; }; };
    auto spacers = [](std::int64_t n) { return [n](Model& m) { m.spacerCount = n; }; };
    auto active = [](std::string name) { return [name](Model& m) { m.activeProfile = name; }; };
    using testing::storedData;
    return {
        {rules, storedData(R"({"a":"alwaysHidden","sys:Clock":"visible"})"),
         [](Model& m) {
             m.rules = {{"a", MenuBarSection::alwaysHidden},
                        {"sys:Clock", MenuBarSection::visible}};
         }},
        // Sections match case-sensitively, one entry at a time.
        {rules, storedData(R"({"a":"hidden","b":"Hidden","c":"dynamic"})"),
         [](Model& m) {
             m.rules = {{"a", MenuBarSection::hidden}, {"c", MenuBarSection::dynamic}};
         },
         true},
        {rules, storedData(R"({"a":"hidden")"), noRules, true},
        {rules, storedData(""), noRules, true},
        {rules, storedData(R"(["hidden"])"), noRules, true},
        {rules, storedData(R"({"a":"hidden","b":5})"), noRules, true},
        {rules, storedData(R"({"Work":{"a":"hidden"}})"), noRules, true},
        {rules, storedData(R"({"a":"hidden"} x)"), noRules, true},
        {rules, storedData("{\"a\xff\":\"hidden\"}"), noRules, true},
        {rules, storedText(R"({"a":"hidden"})"), noRules, true},
        {rules, StoredValue{2.5}, noRules, true},
        {rules,
         storedData(R"({"a":"hidden","b":)" + std::string(3000, '[') + std::string(3000, ']') +
                    "}"),
         noRules, true},
        // Unknown sections are dropped and a profile they empty is kept.
        {profiles, storedData(R"({"Work":{"a":"hidden","b":"bogus"},"Empty":{"x":"nope"}})"),
         [](Model& m) {
             m.profiles = {{"Work", {{"a", MenuBarSection::hidden}}}, {"Empty", {}}};
         },
         true},
        {profiles, storedData(R"({"a":"hidden"})"), noProfiles, true},
        {profiles, storedData(R"({"Work":{"a":"hidden"},"Home":{"a":true}})"), noProfiles, true},
        {profiles, storedData(std::string_view("\x00\x01garbage", 9)), noProfiles, true},
        // Reveal on hover takes only a Boolean, the numbers 0 and 1 included.
        {"quillet.autoRehideOnOutsideClick", StoredValue{std::int64_t{0}}, hover(false)},
        {"quillet.autoRehideOnOutsideClick", StoredValue{0.0}, hover(false)},
        {"quillet.autoRehideOnOutsideClick", StoredValue{std::int64_t{2}}, hover(true)},
        {"quillet.autoRehideOnOutsideClick", storedText("NO"), hover(true)},
        // Collapse at launch and the spacers read like boolForKey and integerForKey.
        {"quillet.collapsedAtLaunch", storedText("\n YES"), collapse(true)},
        {"quillet.collapsedAtLaunch", storedData("1"), collapse(false)},
        {"quillet.spacerCount", storedText(" \t12 spacers"), spacers(12)},
        {"quillet.spacerCount", StoredValue{std::int64_t{-3}}, spacers(-3)},
        {"quillet.hotKey", storedText("CmdShiftM"), hotKeyB},
        {"quillet.hotKey", StoredValue{std::int64_t{3}}, hotKeyB},
        {"quillet.activeProfile", storedText("Gone"), active("Gone")},
        {"quillet.activeProfile", StoredValue{true}, active("")},
    };
}

// Runs of Quillet over one user defaults domain: seeded random changes of every setting and
// profile, relaunches, and between runs an odd value under one of its keys or a run over a
// truncated settings file. After every step the settings are what the model says, every change
// is announced (after a word that one is coming) while the old value still holds, and nothing
// the user stored is lost.
class SettingsOperations : public ::testing::TestWithParam<unsigned> {
protected:
    SettingsOperations() : random(GetParam()) {}
    ~SettingsOperations() override { std::filesystem::remove(path); }

    void relaunch(KeyValueStore& store) {
        tokens.clear();
        prefs.reset();
        prefs = std::make_unique<AppPreferences>(store, &log);
        listen();
        expectModel("after a relaunch");
    }

    // Every property's announcements, each checked to come while the old value is still held.
    void listen() {
        auto& p = *prefs;
        tokens.push_back(p.objectWillChange().subscribe([this] { announced.push_back("will"); }));
        watch("autoRehide", p.autoRehideChanges(), &Model::autoRehide);
        watch("collapse", p.collapseAtLaunchChanges(), &Model::collapseAtLaunch);
        watch("hotKey", p.hotKeyChanges(), &Model::hotKey);
        watch("spacers", p.spacerCountChanges(), &Model::spacerCount);
        watch("active", p.activeProfileChanges(), &Model::activeProfile);
        watch("profiles", p.profilesChanges(), &Model::profiles);
        watch("rules", p.sectionByBundleIDChanges(), &Model::rules);
    }

    template <class T>
    void watch(const char* name, const Observable<T>& property, T Model::*modelled) {
        tokens.push_back(property.subscribeToChanges([this, name, &property, modelled](const T&) {
            announced.push_back(name);
            EXPECT_EQ(property.value(), model.*modelled) << name << " stored before announced";
        }));
    }

    void expectModel(const std::string& when) {
        SCOPED_TRACE(when);
        EXPECT_EQ(prefs->autoRehide(), model.autoRehide);
        EXPECT_EQ(prefs->collapseAtLaunch(), model.collapseAtLaunch);
        EXPECT_EQ(prefs->hotKey(), model.hotKey);
        EXPECT_EQ(prefs->spacerCount(), model.spacerCount);
        EXPECT_EQ(prefs->activeProfile(), model.activeProfile);
        EXPECT_EQ(prefs->profiles(), model.profiles);
        EXPECT_EQ(prefs->sectionByBundleID(), model.rules);
    }

    template <class T> const T& pick(const std::vector<T>& choices) {
        return choices[random() % choices.size()];
    }

    // One change the user makes, applied to Quillet and the model; the properties it announces.
    std::vector<std::string> change() {
        const std::string name = pick<std::string>({"", "Work", "work", "Home ✓"});
        switch (random() % 8) {
        case 0: {
            const std::string key = pick<std::string>({"com.a", "com.b", "sys:Clock", "com.é"});
            const auto section = static_cast<MenuBarSection>(random() % 4);
            prefs->setSection(section, key);
            model.rules[key] = section;
            return {"rules"};
        }
        case 1:
            prefs->saveProfile(name);
            if (name.empty()) {
                return {};
            }
            model.profiles[name] = model.rules;
            model.activeProfile = name;
            return {"profiles", "active"};
        case 2:
            prefs->switchProfile(name);
            model.activeProfile = model.profiles.contains(name) ? name : "";
            if (!model.profiles.contains(name)) {
                return {"active"};
            }
            model.rules = model.profiles[name];
            return {"rules", "active"};
        case 3:
            prefs->deleteProfile(name);
            model.profiles.erase(name);
            if (model.activeProfile != name) {
                return {"profiles"};
            }
            model.activeProfile = "";
            return {"profiles", "active"};
        case 4: {
            const HotKeyOption key = allHotKeyOptions[random() % allHotKeyOptions.size()];
            prefs->setHotKey(key);
            model.hotKey = key;
            return {"hotKey"};
        }
        case 5: {
            const auto count = pick<std::int64_t>({-3, 0, 1, 2, 5, 9, INT64_MAX});
            prefs->setSpacerCount(count);
            model.spacerCount = count;
            return {"spacers"};
        }
        case 6: {
            const bool on = random() % 2;
            prefs->setAutoRehide(on);
            model.autoRehide = on;
            return {"autoRehide"};
        }
        default: {
            const bool on = random() % 2;
            prefs->setCollapseAtLaunch(on);
            model.collapseAtLaunch = on;
            return {"collapse"};
        }
        }
    }

    // Another program, an older build or a hand edit leaves an odd value under one of Quillet's
    // keys; the next run reads it as the user defaults would, and a document that does not load
    // whole stays stored until its property is assigned, then is kept aside.
    void plantOddValue() {
        const std::vector<OddValue> odd = oddValues();
        planted = odd[random() % odd.size()];
        defaults.put(planted->key, planted->stored);
        planted->reads(model);
    }

    void expectPlantedValueKept(std::size_t logLinesBefore) {
        if (!planted || defaults.value(planted->key) == planted->stored) {
            return; // not assigned yet
        }
        const std::string backupKey = planted->key + std::string(AppPreferences::kUnreadableSuffix);
        if (planted->keptAside) {
            EXPECT_EQ(defaults.value(backupKey), planted->stored) << "written over without a copy";
            EXPECT_EQ(log.lines().size(), logLinesBefore + 1);
        }
        planted.reset();
    }

    std::string fileText() const {
        std::ifstream input(path, std::ios::binary);
        std::stringstream text;
        text << input.rdbuf();
        return text.str();
    }

    // A run over a settings file cut short goes on with the defaults in memory and never writes
    // the file; the next run over the user's own settings finds them as they were.
    void runOverATruncatedFile() {
        const std::string whole = R"({"quillet.hotKey": "cmdShiftM", "quillet.spacerCount": 2})";
        std::ofstream(path, std::ios::binary) << whole.substr(0, random() % (whole.size() - 1));
        const std::string damaged = fileText();
        sim::FileKeyValueStore file(path, log);
        const Model saved = std::exchange(model, Model{});
        relaunch(file);
        for (int i = 0; i < 5; ++i) {
            change();
        }
        expectModel("over a truncated file");
        EXPECT_EQ(fileText(), damaged);
        model = saved;
        relaunch(defaults);
    }

    std::filesystem::path path = testing::scratchFile("settings.json");
    std::mt19937 random;
    sim::SimulatedLog log;
    sim::MemoryKeyValueStore defaults;
    std::unique_ptr<AppPreferences> prefs;
    std::vector<Subscription> tokens;
    std::vector<std::string> announced;
    Model model;
    std::optional<OddValue> planted;
};

TEST_P(SettingsOperations, EveryRunShowsWhatTheUserLastSetAndLosesNothingStored) {
    relaunch(defaults);
    EXPECT_TRUE(defaults.contents().empty()) << "a fresh install wrote before any change";
    for (int step = 0; step < 200; ++step) {
        const auto roll = random() % 20;
        if (roll == 0) {
            relaunch(defaults);
        } else if (roll <= 2) {
            prefs.reset();
            plantOddValue();
            relaunch(defaults);
        } else if (roll == 3) {
            runOverATruncatedFile();
        } else {
            const std::size_t logLines = log.lines().size();
            announced.clear();
            std::vector<std::string> expected;
            for (const std::string& property : change()) {
                expected.insert(expected.end(), {"will", property});
            }
            EXPECT_EQ(announced, expected) << "step " << step;
            expectModel("step " + std::to_string(step));
            expectPlantedValueKept(logLines);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SettingsOperations, ::testing::Range(1u, 7u));

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
