// The settings file as quillet-sim keeps it: whatever the file holds, opening it and loading the
// preferences from it never crashes; a file that cannot be read is never written; and a write to
// one that can keeps every other member's value.
#include "core/prefs/AppPreferences.hpp"
#include "core/support/BoundedJson.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"

#include "FuzzSupport.hpp"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

using namespace quillet;

namespace {

// In memory where the system has such a folder: every input is written to a file and back.
std::filesystem::path settingsPath() {
    const std::filesystem::path folder = std::filesystem::is_directory("/dev/shm")
                                             ? std::filesystem::path("/dev/shm")
                                             : std::filesystem::temp_directory_path();
    return folder / ("quillet-fuzz-settings-" + std::to_string(::getpid()) + ".json");
}

std::string fileText(const std::filesystem::path& path) {
    std::ifstream input(path, std::ios::binary);
    std::stringstream text;
    text << input.rdbuf();
    return text.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::filesystem::path path = settingsPath();
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;

    sim::SimulatedLog log;
    sim::FileKeyValueStore store(path, log);
    AppPreferences prefs(store, &log);
    prefs.setSpacerCount(prefs.spacerCount() == 1 ? 2 : 1);
    QUILLET_FUZZ_CHECK(store.value("quillet.spacerCount").isAbsent() == false);

    const std::string written = fileText(path);
    auto original = sim::SettingsDocument::parse(text).document;
    if (!original) {
        QUILLET_FUZZ_CHECK(!store.savesToFile());
        QUILLET_FUZZ_CHECK(written == text);
        QUILLET_FUZZ_CHECK(log.lines().size() == 1);
        return 0;
    }
    QUILLET_FUZZ_CHECK(store.savesToFile());
    auto rewritten = sim::SettingsDocument::parse(written).document;
    QUILLET_FUZZ_CHECK(rewritten.has_value());
    const nlohmann::json members = *parseBoundedJson(text).document;
    for (const auto& member : members.items()) {
        if (member.key() != "quillet.spacerCount") {
            QUILLET_FUZZ_CHECK(rewritten->value(member.key()) == original->value(member.key()));
        }
    }
    return 0;
}
