#include "core/prefs/AppPreferences.hpp"

#include "core/prefs/DefaultsReading.hpp"

#include <type_traits>
#include <variant>

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

// The document stored under `key`, decoded; a stored value of another kind, or one that does
// not decode whole, is noted in `unreadable` as it was stored.
template <class Decode>
auto loadDocument(const KeyValueStore& defaults, const std::string& key, Decode decode,
                  std::map<std::string, StoredValue>& unreadable) {
    const StoredValue stored = defaults.value(key);
    decltype(decode(Bytes{})) decoded;
    if (auto data = DefaultsReading::data(stored)) {
        decoded = decode(*data);
    } else {
        decoded.whole = stored.isAbsent(); // a value of another kind is not read at all
    }
    if (!decoded.whole) {
        unreadable.emplace(key, stored);
    }
    return std::move(decoded.value);
}

// Writes `value` back under `key` with the setter of its own kind.
void storeAsItWas(KeyValueStore& defaults, const std::string& key, const StoredValue& value) {
    std::visit(
        [&](const auto& content) {
            using Kind = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                defaults.setBool(key, content);
            } else if constexpr (std::is_same_v<Kind, std::int64_t>) {
                defaults.setInteger(key, content);
            } else if constexpr (std::is_same_v<Kind, double>) {
                defaults.setReal(key, content);
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                defaults.setString(key, content);
            } else if constexpr (std::is_same_v<Kind, Bytes>) {
                defaults.setData(key, content);
            }
        },
        value.content);
}

} // namespace

AppPreferences::AppPreferences(KeyValueStore& defaults, LogSink* log)
    : defaults_(defaults), log_(log), autoRehide_(loadAutoRehide(defaults)),
      collapseAtLaunch_(DefaultsReading::boolean(defaults.value(kCollapseAtLaunchKey))),
      hotKey_(loadHotKey(defaults)),
      spacerCount_(DefaultsReading::integer(defaults.value(kSpacerCountKey))),
      activeProfile_(DefaultsReading::string(defaults.value(kActiveProfileKey)).value_or("")),
      profiles_(
          loadDocument(defaults, kProfilesKey, SectionRulesCoding::decodeProfiles, unreadable_)),
      sectionByBundleID_(
          loadDocument(defaults, kSectionRulesKey, SectionRulesCoding::decodeRules, unreadable_)) {}

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
    writeDocument(kProfilesKey, SectionRulesCoding::encode(profiles_.value()));
}

void AppPreferences::setSectionByBundleID(SectionRules value) {
    assign(sectionByBundleID_, std::move(value));
    writeDocument(kSectionRulesKey, SectionRulesCoding::encode(sectionByBundleID_.value()));
}

// Nothing is stored when the document cannot be encoded, so the original is then not moved yet.
void AppPreferences::writeDocument(const std::string& key, const std::optional<Bytes>& data) {
    if (!data) {
        return;
    }
    if (auto original = unreadable_.extract(key)) {
        const std::string backupKey = key + std::string(kUnreadableSuffix);
        storeAsItWas(defaults_, backupKey, original.mapped());
        if (log_) {
            log_->log("Quillet: the stored " + key +
                      " could not be read in full; the original is kept under " + backupKey);
        }
    }
    defaults_.setData(key, *data);
}

void AppPreferences::setSection(MenuBarSection section, const std::string& bundleID) {
    SectionRules rules = sectionByBundleID_.value();
    rules[bundleID] = section;
    setSectionByBundleID(std::move(rules));
}

} // namespace quillet
