#pragma once

#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"
#include "sim/SimulatedMac.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>

// A property the fuzzed code must keep: when it does not, the input is a failure that libFuzzer
// keeps, just like a crash.
#define QUILLET_FUZZ_CHECK(condition)                                                              \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: property failed: %s\n", __FILE__, __LINE__, #condition);  \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

namespace quillet::fuzz {

// True when a reader refused its input, which it must do in one line.
template <class Result> bool refusedInOneLine(const Result& result) {
    if (result.value) {
        return false;
    }
    QUILLET_FUZZ_CHECK(!result.error.empty());
    QUILLET_FUZZ_CHECK(result.error.find('\n') == std::string::npos);
    return true;
}

// Everything the app derives from a window list and the hosted bar's tree: the item lists, the
// bar's kind and the documents.
inline void readItems(const sim::SimulatedMac& mac, Pid ownPID) {
    ItemEnumerator enumerator(mac, mac, mac);
    MenuBarDebug::listingDocument(enumerator.logicalItems(ownPID));
    MenuBarDebug::listingDocument(enumerator.mainDisplayItems(ownPID));
    MenuBarDebug::rawDocument({enumerator.rawItems(ownPID), enumerator.activeDisplayBounds(),
                               mac.preflight(), mac.isTrusted(false)});
    HostedItemEnumerator hosted(mac, mac, mac);
    hosted.barKind(ownPID, 27);
    auto slots = hosted.rawItems(ownPID).value_or(std::vector<HostedMenuBarItem>{});
    MenuBarDebug::hostedListingDocument(HostedItemEnumerator::logicalItems(slots));
    MenuBarDebug::hostedRawDocument(
        {slots, enumerator.activeDisplayBounds(), mac.preflight(), mac.isTrusted(false)});
}

} // namespace quillet::fuzz
