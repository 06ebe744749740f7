// Process entry: a diagnostic mode that prints or dumps what the item enumerator sees and exits,
// or the resident menu bar agent.
#import <AppKit/AppKit.h>

#import "macos/app/Bootstrap.h"
#include "macos/app/Platform.h"

#include "core/app/CommandLine.hpp"
#include "core/app/MenuBarDebug.hpp"
#include "core/menubar/ItemEnumerator.hpp"

#include <cstdlib>

namespace {

// The shared application object, kept for the life of the process. It is created before the
// command line is read, so the diagnostic modes run inside an application too.
NSApplication* application = nil;

} // namespace

int main() {
    using namespace quillet;
    @autoreleasepool {
        application = [NSApplication sharedApplication];

        macos::Platform& platform = macos::Platform::shared();
        const LaunchMode mode = CommandLine::launchMode(platform.process.arguments());
        ItemEnumerator enumerator(platform.windows, platform.displays, platform.workspace);
        HostedItemEnumerator hosted(platform.menuBarHost, platform.windows, platform.workspace);
        MenuBarDebug debug(enumerator, hosted, platform.screenCapture, platform.accessibility,
                           platform.process, platform.log);
        if (CommandLine::runDiagnosticMode(mode, debug, platform.process)) {
            std::exit(EXIT_SUCCESS);
        }

        [application setDelegate:[[Bootstrap shared] delegate]];
        [application run];
    }
    return 0;
}
