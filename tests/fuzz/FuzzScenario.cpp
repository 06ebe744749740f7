// Scenarios as quillet-sim reads them: refused in one line or read, and a read one's rules and
// profiles decoded as the player stores them.
#include "core/prefs/SectionRules.hpp"
#include "sim/app/Scenario.hpp"

#include "FuzzSupport.hpp"

#include <cstdint>
#include <string>
#include <string_view>

using namespace quillet;

namespace {

Bytes bytesOf(const nlohmann::json& value) {
    const std::string text = value.dump();
    return Bytes(text.begin(), text.end());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto result = sim::parseScenario(std::string_view(reinterpret_cast<const char*>(data), size));
    if (fuzz::refusedInOneLine(result)) {
        return 0;
    }
    SectionRulesCoding::decodeRules(bytesOf(result.value->rules));
    SectionRulesCoding::decodeProfiles(bytesOf(result.value->profiles));
    return 0;
}
