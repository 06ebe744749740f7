#include "core/menubar/AppIcon.hpp"

#include "core/ports/Workspace.hpp"

namespace quillet {

ImageRef AppIcon::forBundleID(const std::optional<std::string>& bundleID) const {
    if (bundleID) {
        if (auto path = identity_.applicationPath(*bundleID)) {
            if (auto icon = workspace_.icon(*path)) {
                return icon;
            }
        }
    }
    if (auto symbol = symbols_.symbol("app.dashed")) {
        return symbol;
    }
    return symbols_.emptyImage();
}

} // namespace quillet
