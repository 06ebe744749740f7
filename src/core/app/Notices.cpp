#include "core/app/Notices.hpp"

#include "core/ports/LogSink.hpp"
#include "core/ports/Workspace.hpp"

namespace quillet {

bool Notices::post(const Notice& notice) {
    if (!posted_.insert(notice.key).second) {
        return false;
    }
    log_.log(notice.line);
    std::function<void(std::size_t)> chosen;
    if (notice.url) {
        chosen = [&workspace = workspace_, url = *notice.url](std::size_t button) {
            if (button == 0) {
                workspace.openURL(url);
            }
        };
    }
    alerts_.present(notice.alert, std::move(chosen));
    return true;
}

} // namespace quillet
