#pragma once

#include "core/ports/AlertPresenter.hpp"

#include <optional>
#include <set>
#include <string>

namespace quillet {

class LogSink;
class Workspace;

// Something Quillet must tell the user because it could not do what was asked, or because the
// user can do what Quillet cannot.
struct Notice {
    // What the notice is about; a notice is shown once per run for each key.
    std::string key;
    // One line for the log, the whole story in brief.
    std::string line;
    Alert alert;
    // Opened when the user picks the alert's first button (a System Settings page, say).
    std::optional<std::string> url;
};

// Tells the user, once per run and per subject, what Quillet could not do: a line in the log
// and an alert. Repeating the same alert at every collapse or every launch of an app would
// fight the user; the log keeps every occurrence's first line only, for the same reason.
class Notices {
public:
    // Every reference must outlive the notices.
    Notices(AlertPresenter& alerts, Workspace& workspace, LogSink& log)
        : alerts_(alerts), workspace_(workspace), log_(log) {}

    // Logs and shows `notice` unless one with its key was posted before; true when shown.
    bool post(const Notice& notice);

private:
    AlertPresenter& alerts_;
    Workspace& workspace_;
    LogSink& log_;
    std::set<std::string> posted_;
};

} // namespace quillet
