#include "macos/app/Platform.h"

namespace quillet::macos {

Platform& Platform::shared() {
    static Platform platform;
    return platform;
}

PlatformPorts Platform::ports() {
    return {.scheduler = scheduler,
            .application = application,
            .process = process,
            .windows = windows,
            .displays = displays,
            .workspace = workspace,
            .accessibility = accessibility,
            .menuBarHost = menuBarHost,
            .statusBar = statusBar,
            .input = input,
            .hotKeys = hotKeys,
            .pointer = pointer,
            .defaults = defaults,
            .loginItem = loginItem,
            .updater = updater,
            .alerts = alerts,
            .log = log,
            .keys = keys,
            .panels = panels,
            .screenCapture = screenCapture,
            .settingsWindows = settingsWindows,
            .symbols = workspace};
}

} // namespace quillet::macos
