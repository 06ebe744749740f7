// What the two privacy grants withhold from a process that lacks them, and accessibility
// messages to applications that do not answer.
//
// Known:
//  - Screen Recording: since macOS 10.15 the window server leaves kCGWindowName out of the
//    descriptions of windows that another process owns; the process's own windows keep their
//    titles. Bounds, owner and number stay. Under macOS 26 naming Control Center owns every status
//    item window, ours included, so no status item has a title without the grant.
//  - Accessibility: events posted without it are dropped without an error;
//    CGPreflightPostEventAccess tells in advance. AXUIElement calls fail without it.
//  - A message to an application that does not answer waits for the messaging timeout of the
//    element it is sent to, then fails; each element has its own timeout.
// Assumed:
//  - Granting takes effect at once for the running process (no relaunch), and nothing notifies
//    it; Quillet must look again.
//  - The system's own messaging timeout, used when none is set, is about 6 s (the figure that
//    reports of frozen accessibility clients give; Apple does not document it).
//  - Windows given with addWindow are taken as the window server described them (a recording
//    already shows the grants it was made with), so only status item windows lose their titles.

#include "sim/SimulatedMac.hpp"

#include "sim/VirtualScheduler.hpp"

namespace quillet::sim {

namespace {

using namespace std::chrono_literals;

constexpr Duration kAssumedSystemMessagingTimeout = 6s;

} // namespace

std::optional<std::string> SimulatedMac::listedTitle(MenuBarModel::WindowIdentity& identity) const {
    if (!screenRecording_ && identity.ownerPID != bar_->ownPID()) {
        return std::nullopt;
    }
    return std::move(identity.title);
}

void SimulatedMac::setApplicationHung(Pid pid, bool hung) {
    if (hung) {
        hungApplications_.insert(pid);
    } else {
        hungApplications_.erase(pid);
    }
}

void SimulatedMac::waitForAnswer(std::chrono::milliseconds messagingTimeout) const {
    const Duration span =
        messagingTimeout > 0ms ? Duration(messagingTimeout) : kAssumedSystemMessagingTimeout;
    accessibilityWaited_ += span;
    if (scheduler_) {
        scheduler_->stall(span);
    }
}

bool SimulatedMac::isTrusted(bool) const {
    return accessibility_;
}

std::optional<Rect>
SimulatedMac::firstExtrasMenuBarChildFrame(Pid pid,
                                           std::chrono::milliseconds messagingTimeout) const {
    if (!accessibility_) {
        return std::nullopt;
    }
    // The first message, for the extras menu bar, already goes unanswered.
    if (hungApplications_.contains(pid)) {
        waitForAnswer(messagingTimeout);
        return std::nullopt;
    }
    // A frame set by the test wins over the one the live bar gives.
    if (auto found = extrasFrames_.find(pid); found != extrasFrames_.end()) {
        return found->second;
    }
    return bar_->firstFrameOfProcess(pid);
}

} // namespace quillet::sim
