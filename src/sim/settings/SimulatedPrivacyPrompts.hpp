#pragma once

#include "core/ports/AccessibilityReader.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/ports/ScreenCapture.hpp"

namespace quillet::sim {

class SimulatedMac;

// The system's two privacy prompts and the user who answers them, over the simulated Mac's
// grants. What is known: asking for Accessibility while not trusted raises the system's prompt,
// and the answer is given later, in System Settings; asking for Screen Recording raises its
// prompt once per process (the system does not ask again after a refusal, the request merely
// fails). What is assumed: a grant shows in the next check at once. Whether a Screen Recording
// grant needs a relaunch to take effect differs between releases; to the app that looks like a
// refusal (or a dismissed prompt), which the user here can give.
class SimulatedPrivacyPrompts : public AccessibilityReader, public ScreenCapture {
public:
    enum class Answer { grant, refuse };

    // Both must outlive this object.
    SimulatedPrivacyPrompts(SimulatedMac& mac, Scheduler& scheduler)
        : mac_(mac), scheduler_(scheduler) {}

    // How the user answers each prompt from now on, and after how long.
    void answerAccessibility(Answer answer, Duration after = {}) {
        accessibility_ = {answer, after};
    }
    void answerScreenRecording(Answer answer, Duration after = {}) {
        screenRecording_ = {answer, after};
    }
    int accessibilityPrompts() const { return accessibilityPrompts_; }
    int screenRecordingPrompts() const { return screenRecordingPrompts_; }

    // AccessibilityReader
    bool isTrusted(bool prompt) const override;
    std::optional<Rect>
    firstExtrasMenuBarChildFrame(Pid pid,
                                 std::chrono::milliseconds messagingTimeout) const override;

    // ScreenCapture
    bool preflight() const override;
    void request() override;
    std::optional<CapturedBitmap> captureWindow(WindowID window) const override;
    ImageRef makeImage(const CapturedBitmap& bitmap, Size pointSize) const override;

private:
    struct Reply {
        Answer answer = Answer::refuse;
        Duration after{};
    };
    // The user's reply to one prompt; a grant reaches the simulated Mac `after` from now.
    void reply(const Reply& reply, bool screenRecording) const;

    SimulatedMac& mac_;
    Scheduler& scheduler_;
    Reply accessibility_;
    Reply screenRecording_;
    // Prompts are raised from checks the port declares const.
    mutable int accessibilityPrompts_ = 0;
    int screenRecordingPrompts_ = 0;
    int screenRecordingRequests_ = 0;
};

} // namespace quillet::sim
