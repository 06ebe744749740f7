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
//
// Without Screen Recording the window list withholds every status item's title, and a rule can
// only be about an item that something else still names: its owner under per-application
// naming, or else the one frame Accessibility reports for each application, that of the first
// item it made. No rule can reach any other item (a system item, an application's second item
// under macOS 26 naming), so it must not be hidden by accident: its zone is the visible one. The
// hosted bar's accessibility tree needs no Screen Recording: there every item can be ruled.
class ZoneCheck {
public:
    // One line per item out of its zone ("Slack is hidden, its rule says alwaysHidden") and one
    // for control items out of order; empty when everything is in place.
    // `titlesListed` is false while the window list withholds the titles.
    static std::vector<std::string> problems(const MenuBarModel& bar, const SectionRules& rules,
                                             const std::optional<std::string>& frontmost,
                                             bool titlesListed);
    // The zone the rules give an item of another application or of the system.
    static MenuBarSection zoneFor(const MenuBarModel::Item& item, const SectionRules& rules,
                                  const std::optional<std::string>& frontmost);
    // Whether a rule can be matched to the item at all (see above).
    static bool isIdentifiable(const MenuBarModel& bar, const MenuBarModel::Item& item,
                               bool titlesListed);
};

} // namespace quillet::sim
