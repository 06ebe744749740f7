#include "core/menubar/AXResolver.hpp"

#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/Workspace.hpp"

namespace quillet {

std::optional<Rect> AXResolver::firstExtraFrame(Pid pid) const {
    auto frame = accessibility_.firstExtrasMenuBarChildFrame(pid, kMessagingTimeout);
    if (!frame || !(frame->width() > 0)) {
        return std::nullopt;
    }
    return frame;
}

std::optional<Rect> AXResolver::menuBarItemFrame(const std::string& bundleID) const {
    for (Pid pid : workspace_.runningProcesses(bundleID)) {
        if (auto frame = firstExtraFrame(pid)) {
            return frame;
        }
    }
    return std::nullopt;
}

std::vector<Rect> AXResolver::menuBarItemFrames(const std::string& bundleID) const {
    std::vector<Rect> frames;
    for (Pid pid : workspace_.runningProcesses(bundleID)) {
        if (auto frame = firstExtraFrame(pid)) {
            frames.push_back(*frame);
        }
    }
    return frames;
}

std::vector<ReportedItem> AXResolver::reportedItems(Pid ownPID) const {
    std::vector<ReportedItem> reported;
    for (Pid pid : workspace_.runningApplicationProcesses()) {
        if (pid == ownPID) {
            continue;
        }
        const auto application = workspace_.runningApplication(pid);
        if (!application || !application->bundleID) {
            continue;
        }
        if (const auto frame = firstExtraFrame(pid)) {
            reported.push_back({*application->bundleID, application->name, *frame});
        }
    }
    return reported;
}

} // namespace quillet
