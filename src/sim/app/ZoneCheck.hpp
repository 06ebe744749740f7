#pragma once

#include "core/prefs/SectionRules.hpp"
#include "sim/engine/MenuBarModel.hpp"

#include <optional>
#include <string>
#include <vector>

namespace quillet::sim {

// What "every item in its zone" means, read off the simulated menu bar itself rather than
// through Quillet's eyes: the always-separator, the separator and the toggle in this order; an
// item whose rule is Always left of the always-separator; Hide, and Auto while its application
// is not in front, between the separators; everything else right of the separator. An
// application's items are ruled by its bundle identifier, a system item's by "sys:" and its
// name; immovable items and our own spacers are where they are. Rules on system items that
// Quillet refuses to hide are not for this check.
class ZoneCheck {
public:
    // One line per item out of its zone ("Slack is hidden, its rule says alwaysHidden") and one
    // for control items out of order; empty when everything is in place.
    static std::vector<std::string> problems(const MenuBarModel& bar, const SectionRules& rules,
                                             const std::optional<std::string>& frontmost);
    // The zone the rules give an item of another application or of the system.
    static MenuBarSection zoneFor(const MenuBarModel::Item& item, const SectionRules& rules,
                                  const std::optional<std::string>& frontmost);
};

} // namespace quillet::sim
