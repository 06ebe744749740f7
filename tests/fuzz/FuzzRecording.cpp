// Recorded window lists as quillet-sim reads them: a recording is refused in one line or read,
// and a read one goes through the item enumerator and both diagnostic documents.
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/Recording.hpp"

#include "FuzzCheck.hpp"

#include <cstdint>
#include <string_view>

using namespace quillet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto result = sim::parseRecording(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!result.value) {
        QUILLET_FUZZ_CHECK(!result.error.empty());
        QUILLET_FUZZ_CHECK(result.error.find('\n') == std::string::npos);
        return 0;
    }
    const sim::SimulatedMac& mac = result.value->mac;
    const Pid ownPID = result.value->ownPID;
    ItemEnumerator enumerator(mac, mac, mac);
    MenuBarDebug::listingDocument(enumerator.logicalItems(ownPID));
    MenuBarDebug::listingDocument(enumerator.mainDisplayItems(ownPID));
    MenuBarDebug::rawDocument({enumerator.rawItems(ownPID), enumerator.activeDisplayBounds(),
                               mac.preflight(), mac.isTrusted(false)});
    return 0;
}
