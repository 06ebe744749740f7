#pragma once

#include "core/menubar/MenuBarItem.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

class Workspace;

// Turns the clues a status item window carries (its title, its owner) into the application it
// belongs to and the name a user recognises.
class IdentityResolver {
public:
    explicit IdentityResolver(const Workspace& workspace) : workspace_(workspace) {}

    // No space, a dot, and at least two non-empty dot-separated parts.
    static bool looksLikeBundleID(std::string_view s);
    // Drops a leading developer team identifier ("ABCDE12345.com.example.app").
    static std::string bareBundleID(std::string_view s);

    // The installed application's display name, trying ever shorter identifiers.
    std::optional<std::string> appDisplayName(std::string_view bundleID) const;
    // The installed application's path, found the same way.
    std::optional<std::string> applicationPath(std::string_view bundleID) const;

    // Fills `bundleID`, `displayLabel` and `systemInfo` of one item.
    void resolve(MenuBarItem& item) const;
    // Gives an untitled item the application it belongs to, learnt some other way.
    void resolveAsApplication(MenuBarItem& item, const std::string& bundleID,
                              const std::string& applicationName) const;

private:
    const Workspace& workspace_;
};

} // namespace quillet
