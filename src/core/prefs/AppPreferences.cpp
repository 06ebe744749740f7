#include "core/prefs/AppPreferences.hpp"

#include "core/prefs/DefaultsReading.hpp"

namespace quillet {

namespace {

// Two keys keep the names of earlier behaviours: they are what existing installations hold.
const std::string kAutoRehideKey = "quillet.autoRehideOnOutsideClick";
const std::string kCollapseAtLaunchKey = "quillet.collapsedAtLaunch";
const std::string kHotKeyKey = "quillet.hotKey";
const std::string kSpacerCountKey = "quillet.spacerCount";
const std::string kActiveProfileKey = "quillet.activeProfile";
const std::string kProfilesKey = "quillet.profiles";
const std::string kSectionRulesKey = "quillet.sectionRules";

// Only a Boolean counts, the number 0 or 1 included (as `defaults write … -int 0` stores it);
// another number or a string left under this key is ignored.
bool loadAutoRehide(const KeyValueStore& defaults) {
    return DefaultsReading::exactBoolean(defaults.value(kAutoRehideKey)).value_or(true);
}

HotKeyOption loadHotKey(const KeyValueStore& defaults) {
    auto text = DefaultsReading::string(defaults.value(kHotKeyKey));
    return text ? hotKeyOption(*text).value_or(HotKeyOption::cmdShiftB) : HotKeyOption::cmdShiftB;
}

Profiles loadProfiles(const KeyValueStore& defaults) {
    auto data = DefaultsReading::data(defaults.value(kProfilesKey));
    return data ? SectionRulesCoding::decodeProfiles(*data) : Profiles{};
}

SectionRules loadSectionRules(const KeyValueStore& defaults) {
    auto data = DefaultsReading::data(defaults.value(kSectionRulesKey));
    return data ? SectionRulesCoding::decodeRules(*data) : SectionRules{};
}

} // namespace

AppPreferences::AppPreferences(KeyValueStore& defaults)
    : defaults_(defaults), autoRehide_(loadAutoRehide(defaults)),
      collapseAtLaunch_(DefaultsReading::boolean(defaults.value(kCollapseAtLaunchKey))),
      hotKey_(loadHotKey(defaults)),
      spacerCount_(DefaultsReading::integer(defaults.value(kSpacerCountKey))),
      activeProfile_(DefaultsReading::string(defaults.value(kActiveProfileKey)).value_or("")),
      profiles_(loadProfiles(defaults)), sectionByBundleID_(loadSectionRules(defaults)) {}

void AppPreferences::setAutoRehide(bool value) {
    assign(autoRehide_, value);
    defaults_.setBool(kAutoRehideKey, autoRehide_.value());
}

void AppPreferences::setCollapseAtLaunch(bool value) {
    assign(collapseAtLaunch_, value);
    defaults_.setBool(kCollapseAtLaunchKey, collapseAtLaunch_.value());
}

void AppPreferences::setHotKey(HotKeyOption value) {
    assign(hotKey_, value);
    defaults_.setString(kHotKeyKey, std::string(rawValue(hotKey_.value())));
}

void AppPreferences::setSpacerCount(std::int64_t value) {
    assign(spacerCount_, value);
    defaults_.setInteger(kSpacerCountKey, spacerCount_.value());
}

void AppPreferences::setActiveProfile(std::string value) {
    assign(activeProfile_, std::move(value));
    defaults_.setString(kActiveProfileKey, activeProfile_.value());
}

void AppPreferences::setProfiles(Profiles value) {
    assign(profiles_, std::move(value));
    if (auto data = SectionRulesCoding::encode(profiles_.value())) {
        defaults_.setData(kProfilesKey, *data);
    }
}

void AppPreferences::setSectionByBundleID(SectionRules value) {
    assign(sectionByBundleID_, std::move(value));
    if (auto data = SectionRulesCoding::encode(sectionByBundleID_.value())) {
        defaults_.setData(kSectionRulesKey, *data);
    }
}

void AppPreferences::setSection(MenuBarSection section, const std::string& bundleID) {
    SectionRules rules = sectionByBundleID_.value();
    rules[bundleID] = section;
    setSectionByBundleID(std::move(rules));
}

} // namespace quillet
