#include "core/prefs/AppPreferences.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace quillet {
namespace {

using nlohmann::json;
using testing::bytesOf;

// Seeded random stored blobs for the two rule keys: JSON documents close to the real shapes,
// the same documents damaged, and plain noise.
class BlobGenerator {
public:
    explicit BlobGenerator(std::uint32_t seed) : random_(seed) {}

    Bytes next() {
        if (below(4) == 0) {
            Bytes noise;
            for (std::uint32_t n = below(64); n > 0; --n) {
                noise.push_back(static_cast<std::uint8_t>(number()));
            }
            return noise;
        }
        Bytes blob = bytesOf(document().dump());
        if (below(3) == 0 && !blob.empty()) {
            blob[below(static_cast<std::uint32_t>(blob.size()))] =
                static_cast<std::uint8_t>(number());
        }
        return blob;
    }

private:
    std::uint32_t number() { return static_cast<std::uint32_t>(random_()); }
    std::uint32_t below(std::uint32_t bound) { return number() % bound; }

    std::string text() {
        static const char* const pool[] = {
            "visible", "hidden", "alwaysHidden", "dynamic",   "Hidden", "dynamic ",
            "",        "Show",   "com.a",        "sys:Clock", "é✓",     "\\\""};
        return pool[below(static_cast<std::uint32_t>(std::size(pool)))];
    }

    json rules() {
        json object = json::object();
        for (std::uint32_t n = below(5); n > 0; --n) {
            object[text()] = text();
        }
        return object;
    }

    // Mostly rules or profiles documents, now and then with a member of any other kind.
    json document(int depth = 2) {
        switch (below(depth > 0 ? 8 : 4)) {
        case 0:
            return nullptr;
        case 1:
            return below(2) == 0 ? json(number()) : json(number() % 2 == 0);
        case 2:
            return text();
        case 3:
            return rules();
        case 4:
            return json::array({document(depth - 1)});
        case 5: {
            json profiles = json::object();
            for (std::uint32_t n = below(4); n > 0; --n) {
                profiles[text()] = rules();
            }
            return profiles;
        }
        default: {
            json object = below(2) == 0 ? rules() : json::object({{text(), rules()}});
            object[text()] = document(depth - 1);
            return object;
        }
        }
    }

    std::mt19937 random_;
};

TEST(RuleDecoding, RandomBlobsNeverCrashAndLoadOnlyWhatTheyHold) {
    BlobGenerator generator(20240611);
    for (int i = 0; i < 4000; ++i) {
        const Bytes blob = generator.next();
        sim::MemoryKeyValueStore store;
        store.put("quillet.sectionRules", StoredValue{blob});
        store.put("quillet.profiles", StoredValue{blob});
        AppPreferences prefs(store);
        ASSERT_EQ(store.value("quillet.sectionRules"), StoredValue{blob});
        ASSERT_EQ(store.value("quillet.profiles"), StoredValue{blob});

        // Every loaded rule is a member of the document, as written there.
        const json document = json::parse(blob.begin(), blob.end(), nullptr, false);
        for (const auto& [key, section] : prefs.sectionByBundleID()) {
            ASSERT_EQ(document.at(key), rawValue(section));
        }
        // And a document of nothing but strings loses none of its sections.
        if (document.is_object() && std::all_of(document.begin(), document.end(),
                                                [](const json& v) { return v.is_string(); })) {
            for (const auto& [key, value] : document.items()) {
                const bool known = menuBarSection(value.get<std::string>()).has_value();
                ASSERT_EQ(prefs.sectionByBundleID().count(key), known ? 1u : 0u) << key;
            }
        }
        for (const auto& [name, rules] : prefs.profiles()) {
            for (const auto& [key, section] : rules) {
                ASSERT_EQ(document.at(name).at(key), rawValue(section));
            }
        }

        // Whatever was loaded is written in a form that reads back the same, and nothing else of
        // the stored document is lost: it was carried over whole, or it is kept aside.
        prefs.setSectionByBundleID(prefs.sectionByBundleID());
        prefs.setProfiles(prefs.profiles());
        AppPreferences relaunched(store);
        ASSERT_EQ(relaunched.sectionByBundleID(), prefs.sectionByBundleID());
        ASSERT_EQ(relaunched.profiles(), prefs.profiles());
        for (const std::string key : {"quillet.sectionRules", "quillet.profiles"}) {
            const StoredValue aside = store.value(key + ".unreadable");
            if (aside.isAbsent()) {
                ASSERT_EQ(testing::storedJSON(store, key), document) << key;
            } else {
                ASSERT_EQ(aside, StoredValue{blob}) << key;
            }
        }
    }
}

} // namespace
} // namespace quillet
