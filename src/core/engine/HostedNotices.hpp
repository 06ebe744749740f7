#pragma once

#include "core/app/Notices.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace quillet {

// What Quillet tells the user when a collapse hid nothing, and, on the hosted menu bar of
// macOS 27, what only the user can do there. Every word here; the engine decides when.
namespace HostedNotices {

// A collapse undone: `what` says what was still in view; `waitingSeparators` extra separators
// were just made for the user to put beside the separator (none: nothing to ask).
Notice collapseFailed(const std::string& what, std::size_t waitingSeparators);
// The toggle stands left of the separator, where a collapse would take it along.
Notice toggleLeftOfSeparator();
// Items ruled Hide or Auto that stand right of the separator, named.
Notice dragLeftOfSeparator(const std::vector<std::string>& applications);
// Items ruled Always hidden, named: only the system's own switch can do that there.
Notice allowInMenuBar(const std::vector<std::string>& applications);

} // namespace HostedNotices

} // namespace quillet
