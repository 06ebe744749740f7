#pragma once

#include "core/menubar/MenuBarItem.hpp"
#include "core/prefs/SectionRules.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// The key under which the user's section rules name an item: the application's bundle
// identifier, or "sys:" and the window name for a system item. Items with neither cannot be
// ruled.
std::optional<std::string> ruleKey(const MenuBarItem& item);

// Whether a rule key names one of our own items (by our bundle identifier, or "sys:" and one of
// our autosave names). Such a rule is never followed: it would drag a zone border around.
bool namesOwnItem(std::string_view key);

// The section the rules give the item with `key`; an item without a rule (or without a key) is
// visible.
MenuBarSection ruledSection(const SectionRules& rules, const std::optional<std::string>& key);

// Whether `key` names this item window: "sys:" keys by the window name, others by the bundle
// identifier.
bool isNamedBy(const MenuBarItem& item, std::string_view key);

// Whether the rule keyed `key` is about the application `bundleID`: the same identifier, or one
// of them an application and the other a helper of it ("<app>.<something>").
bool appliesToApplication(std::string_view key, std::string_view bundleID);

} // namespace quillet
