#pragma once

#include "core/menubar/IdentityResolver.hpp"
#include "core/ports/PlatformImage.hpp"

#include <map>
#include <optional>
#include <string>

namespace quillet {

// The icon shown beside an item in the settings: its application's icon, or a neutral symbol.
// Each application's icon is asked for once: rows are built again at every keystroke in the
// search field, and finding an application and reading its icon is slow enough to be felt.
class AppIcon {
public:
    AppIcon(const Workspace& workspace, const SymbolImages& symbols)
        : workspace_(workspace), identity_(workspace), symbols_(symbols) {}

    // Never null: falls back to the "app.dashed" symbol, then to an empty image.
    ImageRef forBundleID(const std::optional<std::string>& bundleID) const;
    // Asks again from now on: the list was read afresh, and an application may have changed.
    void forgetIcons() const { icons_.clear(); }

private:
    ImageRef applicationIcon(const std::string& bundleID) const;

    const Workspace& workspace_;
    IdentityResolver identity_;
    const SymbolImages& symbols_;
    // Null where the application or its icon was not found.
    mutable std::map<std::string, ImageRef> icons_;
};

} // namespace quillet
