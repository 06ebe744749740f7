#include "sim/settings/SimulatedPrivacyPrompts.hpp"

#include "sim/SimulatedMac.hpp"

namespace quillet::sim {

bool SimulatedPrivacyPrompts::isTrusted(bool prompt) const {
    const bool trusted = mac_.isTrusted(false);
    if (prompt && !trusted) {
        ++accessibilityPrompts_;
        reply(accessibility_, false);
    }
    // The prompt never changes this answer: the user replies later.
    return trusted;
}

std::optional<Rect>
SimulatedPrivacyPrompts::firstExtrasMenuBarChildFrame(Pid pid,
                                                      std::chrono::milliseconds timeout) const {
    return mac_.firstExtrasMenuBarChildFrame(pid, timeout);
}

bool SimulatedPrivacyPrompts::preflight() const {
    return mac_.preflight();
}

void SimulatedPrivacyPrompts::request() {
    mac_.request();
    if (++screenRecordingRequests_ == 1 && !mac_.preflight()) {
        ++screenRecordingPrompts_;
        reply(screenRecording_, true);
    }
}

std::optional<CapturedBitmap> SimulatedPrivacyPrompts::captureWindow(WindowID window) const {
    return mac_.captureWindow(window);
}

ImageRef SimulatedPrivacyPrompts::makeImage(const CapturedBitmap& bitmap, Size pointSize) const {
    return mac_.makeImage(bitmap, pointSize);
}

void SimulatedPrivacyPrompts::reply(const Reply& reply, bool screenRecording) const {
    if (reply.answer != Answer::grant) {
        return;
    }
    SimulatedMac& mac = mac_;
    scheduler_.postAfter(reply.after, [&mac, screenRecording] {
        screenRecording ? mac.setScreenRecordingAllowed(true) : mac.setAccessibilityTrusted(true);
    });
}

} // namespace quillet::sim
