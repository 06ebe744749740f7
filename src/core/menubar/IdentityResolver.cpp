#include "core/menubar/IdentityResolver.hpp"

#include "core/menubar/SystemItemCatalog.hpp"
#include "core/ports/Workspace.hpp"
#include "core/support/Text.hpp"

#include <algorithm>
#include <cctype>

namespace quillet {

namespace {

// A developer team identifier: exactly ten uppercase letters or digits.
bool isTeamIdentifier(std::string_view part) {
    return part.size() == 10 && std::all_of(part.begin(), part.end(), [](char c) {
               return std::isupper(static_cast<unsigned char>(c)) ||
                      std::isdigit(static_cast<unsigned char>(c));
           });
}

} // namespace

bool IdentityResolver::looksLikeBundleID(std::string_view s) {
    if (s.find(' ') != std::string_view::npos || s.find('.') == std::string_view::npos) {
        return false;
    }
    int parts = 0;
    std::size_t start = 0;
    while (start <= s.size()) {
        auto dot = s.find('.', start);
        auto end = dot == std::string_view::npos ? s.size() : dot;
        parts += end > start ? 1 : 0;
        if (dot == std::string_view::npos) {
            break;
        }
        start = dot + 1;
    }
    return parts >= 2;
}

std::string IdentityResolver::bareBundleID(std::string_view s) {
    // Split at the first dot into at most two parts, dropping empty ones (so leading dots do
    // not count as a part).
    auto begin = s.find_first_not_of('.');
    auto dot = begin == std::string_view::npos ? begin : s.find('.', begin);
    if (dot == std::string_view::npos) {
        return std::string(s);
    }
    auto first = s.substr(begin, dot - begin);
    auto rest = s.substr(dot + 1);
    if (!first.empty() && !rest.empty() && isTeamIdentifier(first)) {
        return std::string(rest);
    }
    return std::string(s);
}

std::optional<std::string> IdentityResolver::applicationPath(std::string_view bundleID) const {
    // Helpers and agents register as "<app>.<something>"; walk back to the application.
    std::string id(bundleID);
    while (id.find('.') != std::string::npos) {
        if (auto path = workspace_.applicationPath(id)) {
            return path;
        }
        id.erase(id.rfind('.'));
    }
    return std::nullopt;
}

std::optional<std::string> IdentityResolver::appDisplayName(std::string_view bundleID) const {
    auto path = applicationPath(bundleID);
    if (!path) {
        return std::nullopt;
    }
    auto name = workspace_.displayName(*path);
    removeAll(name, ".app");
    return name;
}

void IdentityResolver::resolve(MenuBarItem& item) const {
    if (item.windowName) {
        const std::string& name = *item.windowName;
        if (looksLikeBundleID(name)) {
            item.bundleID = bareBundleID(name);
            item.displayLabel = appDisplayName(*item.bundleID).value_or(*item.bundleID);
            return;
        }
        if (auto info = SystemItemCatalog::info(item.windowName, item.ownerName)) {
            item.displayLabel = info->displayName;
            item.systemInfo = std::move(info);
            return;
        }
        item.displayLabel = name;
        return;
    }
    item.displayLabel = item.ownerName.empty()
                            ? "Unknown (pid " + std::to_string(item.ownerPID) + ")"
                            : item.ownerName;
}

void IdentityResolver::resolveAsApplication(MenuBarItem& item, const std::string& bundleID,
                                            const std::string& applicationName) const {
    item.bundleID = bundleID;
    item.displayLabel =
        appDisplayName(bundleID).value_or(applicationName.empty() ? bundleID : applicationName);
}

} // namespace quillet
