// Recorded window lists as quillet-sim reads them: a recording is refused in one line or read,
// and a read one goes through the item enumerator and both diagnostic documents.
#include "sim/Recording.hpp"

#include "FuzzSupport.hpp"

#include <cstdint>
#include <string_view>

using namespace quillet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto result = sim::parseRecording(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!fuzz::refusedInOneLine(result)) {
        fuzz::readItems(result.value->mac, result.value->ownPID);
    }
    return 0;
}
