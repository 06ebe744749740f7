#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quillet {

// What Quillet knows of the status items that the system's own menu bar processes show: their
// user-facing name, the symbol drawn for them, and whether they can be moved or hidden at all.
namespace SystemItemCatalog {

struct Info {
    std::string displayName;
    bool movable = true;
    bool hideable = true;
    std::string symbolName;
    friend bool operator==(const Info&, const Info&) = default;
};

// Owner process names whose windows are looked up in the catalog.
const std::unordered_set<std::string>& systemOwners();
// Internal window name to its row, built once.
const std::unordered_map<std::string, Info>& known();

// The row for a window of a system owner; the fallback record for a name the table lacks.
std::optional<Info> info(const std::optional<std::string>& windowName, std::string_view owner);
// The row for a "sys:" rule key.
std::optional<Info> info(std::string_view ruleKey);

// The row for an item of the hosted bar (macOS 27) by its accessibility identifier,
// "com.apple.menuextra." and the item's name in any case ("controlcenter" for Control Center);
// the fallback record, named by the identifier, for a name the table lacks; nothing for other
// identifiers.
std::optional<Info> infoForMenuExtra(std::string_view identifier);

// What a system item's rule key begins with.
inline constexpr std::string_view kRuleKeyPrefix = "sys:";

// The rule key of a system item: "sys:" followed by its window name.
std::string ruleKey(std::string_view windowName);

} // namespace SystemItemCatalog

} // namespace quillet
