#include "core/engine/RuleKey.hpp"

#include "core/menubar/ItemEnumerator.hpp"
#include "core/menubar/SystemItemCatalog.hpp"

namespace quillet {

std::optional<std::string> ruleKey(const MenuBarItem& item) {
    if (item.bundleID) {
        return item.bundleID;
    }
    if (item.systemInfo && item.windowName) {
        return SystemItemCatalog::ruleKey(*item.windowName);
    }
    return std::nullopt;
}

bool namesOwnItem(std::string_view key) {
    const std::string_view named = key.starts_with(SystemItemCatalog::kRuleKeyPrefix)
                                       ? key.substr(SystemItemCatalog::kRuleKeyPrefix.size())
                                       : key;
    return isOwnItemName(named);
}

MenuBarSection ruledSection(const SectionRules& rules, const std::optional<std::string>& key) {
    if (!key) {
        return MenuBarSection::visible;
    }
    auto rule = rules.find(*key);
    return rule == rules.end() ? MenuBarSection::visible : rule->second;
}

bool isNamedBy(const MenuBarItem& item, std::string_view key) {
    const std::string_view prefix = "sys:";
    return key.starts_with(prefix) ? item.windowName == key.substr(prefix.size())
                                   : item.bundleID == key;
}

namespace {

bool extends(std::string_view longer, std::string_view shorter) {
    return longer.size() > shorter.size() && longer.starts_with(shorter) &&
           longer[shorter.size()] == '.';
}

} // namespace

bool appliesToApplication(std::string_view key, std::string_view bundleID) {
    return key == bundleID || extends(bundleID, key) || extends(key, bundleID);
}

} // namespace quillet
