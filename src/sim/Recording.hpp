#pragma once

#include "sim/JsonInput.hpp"
#include "sim/SimulatedMac.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quillet::sim {

// A window list recorded on a Mac (or written by hand), replayed through the simulated Mac:
//   {"displays": [{"x":0,"y":0,"w":1512,"h":982}, …],   the first is the main display
//    "windows": [{"kCGWindowLayer": 25, "kCGWindowBounds": {"X":…}, …}, …],
//    "ownPID": 4242, "apps": {"com.example.app": "/Applications/Example.app"},
//    "screenRecording": false, "accessibility": false,
//    "macOS": 27,                                         the major version; 26 without it
//    "running": [{"pid": 701, "bundleID": "com.getdropbox.dropbox", "name": "Dropbox"}, …],
//    "menuBarHost": [{"ownerPID": 612, "identifier": "com.apple.menuextra.clock", "display": 0,
//                     "frame": {"x":…,"y":…,"w":…,"h":…}}, …]}
// "menuBarHost", the accessibility tree of the hosted bar's process, says that the process runs;
// a slot without "frame" (or with null) is in the overflow, and "identifier" may be left out.
// Window values are kept exactly as written, odd ones included, so that the core meets them.
struct Recording {
    SimulatedMac mac;
    Pid ownPID = 0;
    int osMajorVersion = 26;
};

using RecordingResult = ParseResult<Recording>;

RecordingResult parseRecording(std::string_view text);

// The CoreGraphics name of a window description key ("kCGWindowLayer", …).
std::string_view windowKeyName(WindowKey key);

} // namespace quillet::sim
