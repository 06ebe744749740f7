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

} // namespace quillet
