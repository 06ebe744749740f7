#include "core/menubar/AppIcon.hpp"

#include "core/ports/Workspace.hpp"

namespace quillet {

ImageRef AppIcon::forBundleID(const std::optional<std::string>& bundleID) const {
    if (auto icon = bundleID ? applicationIcon(*bundleID) : nullptr) {
        return icon;
    }
    if (auto symbol = symbols_.symbol("app.dashed")) {
        return symbol;
    }
    return symbols_.emptyImage();
}

ImageRef AppIcon::applicationIcon(const std::string& bundleID) const {
    auto [known, added] = icons_.try_emplace(bundleID);
    if (added) {
        const auto path = identity_.applicationPath(bundleID);
        known->second = path ? workspace_.icon(*path) : nullptr;
    }
    return known->second;
}

} // namespace quillet
