#include "core/engine/PostEventAccessWatch.hpp"

#include "core/ports/InputInjector.hpp"
#include "core/ports/LogSink.hpp"

#include <utility>

namespace quillet {

namespace {

constexpr std::string_view kMovesNeedAccessibility =
    "Quillet: moving menu bar items needs Accessibility — allow Quillet in System Settings > "
    "Privacy & Security > Accessibility, and the items will be arranged then";

} // namespace

PostEventAccessWatch::PostEventAccessWatch(const InputInjector& input, Workspace& workspace,
                                           LogSink& log, std::function<void()> onGranted)
    : input_(input), workspace_(workspace), log_(log), onGranted_(std::move(onGranted)) {}

PostEventAccessWatch::~PostEventAccessWatch() {
    stopWatching();
}

bool PostEventAccessWatch::allowsMoves() {
    if (input_.canPostEvents()) {
        if (isWaitingForGrant()) {
            stopWatching();
            onGranted_();
        }
        return true;
    }
    if (!isWaitingForGrant()) {
        // Said once per wait: every move of an arrangement asks, and one line is enough.
        log_.log(kMovesNeedAccessibility);
        // The watch is destroyed with its owner, which removes the observer first.
        observer_ =
            workspace_.addObserver(WorkspaceEvent::didActivateApplication, [this] { lookAgain(); });
    }
    return false;
}

void PostEventAccessWatch::lookAgain() {
    if (input_.canPostEvents()) {
        stopWatching();
        onGranted_();
    }
}

void PostEventAccessWatch::stopWatching() {
    if (observer_) {
        workspace_.removeObserver(*std::exchange(observer_, std::nullopt));
    }
}

} // namespace quillet
