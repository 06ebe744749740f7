#pragma once

#include "core/ports/Workspace.hpp"

#include <functional>
#include <optional>

namespace quillet {

class InputInjector;
class LogSink;

// Moving items takes synthetic events, and without the Accessibility grant the window server
// drops them without a word. The watch answers whether moves can be made now; when they cannot,
// it says so once in the log and waits for the grant, then calls `onGranted` so that the work
// that could not be done runs again.
//
// Nothing announces a grant, and polling would be work while nothing happens. So the watch looks
// again only when something already wakes Quillet: another application coming to the front (as
// when the user leaves System Settings after allowing Quillet there) and the next question about
// moving. Once the grant is there it watches nothing at all. Main thread only.
class PostEventAccessWatch {
public:
    // Every reference must outlive the watch.
    PostEventAccessWatch(const InputInjector& input, Workspace& workspace, LogSink& log,
                         std::function<void()> onGranted);
    ~PostEventAccessWatch();
    PostEventAccessWatch(const PostEventAccessWatch&) = delete;
    PostEventAccessWatch& operator=(const PostEventAccessWatch&) = delete;

    // Whether posted events reach the window server now. A grant found here, while waiting for
    // one, also calls `onGranted` (after the caller has gone on with its own moves).
    bool allowsMoves();

private:
    bool isWaitingForGrant() const { return observer_.has_value(); }
    void lookAgain();
    void stopWatching();

    const InputInjector& input_;
    Workspace& workspace_;
    LogSink& log_;
    std::function<void()> onGranted_;
    std::optional<Workspace::ObserverToken> observer_;
};

} // namespace quillet
