#pragma once

#include "core/menubar/IdentityResolver.hpp"
#include "core/ports/PlatformImage.hpp"

#include <optional>
#include <string>

namespace quillet {

// The icon shown beside an item in the settings: its application's icon, or a neutral symbol.
class AppIcon {
public:
    AppIcon(const Workspace& workspace, const SymbolImages& symbols)
        : workspace_(workspace), identity_(workspace), symbols_(symbols) {}

    // Never null: falls back to the "app.dashed" symbol, then to an empty image.
    ImageRef forBundleID(const std::optional<std::string>& bundleID) const;

private:
    const Workspace& workspace_;
    IdentityResolver identity_;
    const SymbolImages& symbols_;
};

} // namespace quillet
