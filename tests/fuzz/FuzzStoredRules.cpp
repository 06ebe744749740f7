// The stored rules and profiles, as the user defaults hand them to the preferences: whatever the
// blob, loading never crashes, and writing the properties back never loses what was stored: the
// document is carried over whole, or it is kept aside under its backup key.
#include "core/prefs/AppPreferences.hpp"
#include "core/support/BoundedJson.hpp"
#include "sim/prefs/MemoryKeyValueStore.hpp"

#include "FuzzSupport.hpp"

#include <cstdint>
#include <string>

using namespace quillet;

namespace {

nlohmann::json storedDocument(const KeyValueStore& store, const std::string& key) {
    const StoredValue value = store.value(key);
    const auto* data = std::get_if<Bytes>(&value.content);
    QUILLET_FUZZ_CHECK(data != nullptr);
    auto parsed = parseBoundedJson(
        std::string_view(reinterpret_cast<const char*>(data->data()), data->size()));
    QUILLET_FUZZ_CHECK(parsed.document.has_value());
    return *parsed.document;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes blob(data, data + size);
    const StoredValue stored{blob};
    const std::string keys[] = {"quillet.sectionRules", "quillet.profiles"};
    sim::MemoryKeyValueStore store;
    for (const std::string& key : keys) {
        store.put(key, stored);
    }
    AppPreferences prefs(store);
    for (const std::string& key : keys) {
        QUILLET_FUZZ_CHECK(store.value(key) == stored); // loading never writes
    }

    prefs.setSectionByBundleID(prefs.sectionByBundleID());
    prefs.setProfiles(prefs.profiles());
    AppPreferences relaunched(store);
    QUILLET_FUZZ_CHECK(relaunched.sectionByBundleID() == prefs.sectionByBundleID());
    QUILLET_FUZZ_CHECK(relaunched.profiles() == prefs.profiles());

    const auto original =
        parseBoundedJson(std::string_view(reinterpret_cast<const char*>(data), size)).document;
    for (const std::string& key : keys) {
        const StoredValue aside = store.value(key + std::string(AppPreferences::kUnreadableSuffix));
        if (aside.isAbsent()) {
            QUILLET_FUZZ_CHECK(original && storedDocument(store, key) == *original);
        } else {
            QUILLET_FUZZ_CHECK(aside == stored);
        }
    }
    return 0;
}
