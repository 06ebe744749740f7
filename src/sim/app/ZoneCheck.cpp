#include "sim/app/ZoneCheck.hpp"

namespace quillet::sim {

namespace {

bool isHelperOf(std::string_view longer, std::string_view shorter) {
    return longer.size() > shorter.size() && longer.starts_with(shorter) &&
           longer[shorter.size()] == '.';
}

// An Auto rule follows its application and the application's helpers to the front.
bool inFront(const std::string& key, const std::optional<std::string>& frontmost) {
    return frontmost &&
           (key == *frontmost || isHelperOf(*frontmost, key) || isHelperOf(key, *frontmost));
}

std::string name(const MenuBarModel::Item& item) {
    return item.kind == MenuBarModel::Kind::application ? item.appName : item.title;
}

} // namespace

MenuBarSection ZoneCheck::zoneFor(const MenuBarModel::Item& item, const SectionRules& rules,
                                  const std::optional<std::string>& frontmost) {
    const std::string key =
        item.kind == MenuBarModel::Kind::system ? "sys:" + item.title : item.bundleID;
    auto rule = rules.find(key);
    if (rule == rules.end()) {
        return MenuBarSection::visible;
    }
    if (rule->second == MenuBarSection::dynamic) {
        return inFront(key, frontmost) ? MenuBarSection::visible : MenuBarSection::hidden;
    }
    return rule->second;
}

bool ZoneCheck::isIdentifiable(const MenuBarModel& bar, const MenuBarModel::Item& item,
                               bool titlesListed) {
    // The hosted bar's tree names every item's owner, but Apple's items only by identifiers
    // that no rule written by window name matches.
    if (bar.isHosted()) {
        return item.kind == MenuBarModel::Kind::application;
    }
    if (titlesListed) {
        return true;
    }
    if (item.kind != MenuBarModel::Kind::application) {
        return false;
    }
    return bar.naming() == MenuBarNaming::perApplication ||
           bar.firstFrameOfProcess(item.pid) == bar.frame(item.window);
}

std::vector<std::string> ZoneCheck::problems(const MenuBarModel& bar, const SectionRules& rules,
                                             const std::optional<std::string>& frontmost,
                                             bool titlesListed) {
    const auto order = bar.order();
    auto positionOf = [&](const std::string& title) -> std::optional<std::size_t> {
        for (std::size_t i = 0; i < order.size(); ++i) {
            const auto* item = bar.item(order[i]);
            if (item->kind == MenuBarModel::Kind::own && item->title == title) {
                return i;
            }
        }
        return std::nullopt;
    };
    // On the hosted bar nothing but the system's own switch keeps an item always hidden: the
    // always-hidden border takes no room there, and Always rules are the user's to carry out.
    const bool hosted = bar.isHosted();
    const auto separator = positionOf("quillet.separator");
    const auto toggle = positionOf("quillet.toggle");
    const auto alwaysSeparator =
        hosted ? std::optional<std::size_t>(0) : positionOf("quillet.alwaysSeparator");
    if (!alwaysSeparator || !separator || !toggle) {
        return {"the control items are not all in the menu bar"};
    }
    std::vector<std::string> problems;
    if (!(*alwaysSeparator <= *separator && *separator < *toggle)) {
        problems.push_back("the control items are out of order");
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto& item = *bar.item(order[i]);
        if (item.kind == MenuBarModel::Kind::own || !item.movable) {
            continue;
        }
        const MenuBarSection zone = i < *alwaysSeparator ? MenuBarSection::alwaysHidden
                                    : i < *separator     ? MenuBarSection::hidden
                                                         : MenuBarSection::visible;
        const MenuBarSection wanted = isIdentifiable(bar, item, titlesListed)
                                          ? zoneFor(item, rules, frontmost)
                                          : MenuBarSection::visible;
        if (zone != wanted && !(hosted && wanted == MenuBarSection::alwaysHidden)) {
            problems.push_back(name(item) + " is " + std::string(rawValue(zone)) +
                               ", its rule says " + std::string(rawValue(wanted)));
        }
    }
    return problems;
}

} // namespace quillet::sim
