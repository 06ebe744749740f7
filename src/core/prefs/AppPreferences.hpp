#pragma once

#include "core/ports/KeyValueStore.hpp"
#include "core/ports/LogSink.hpp"
#include "core/prefs/HotKeyOption.hpp"
#include "core/prefs/SectionRules.hpp"
#include "core/support/Observable.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// Everything the user chooses: the section rule of every application, the hot key, collapse at
// launch, reveal on hover, the number of spacers, and the named profiles of rules. Every property
// is observable (the settings panes and the application's wiring subscribe to it) and every
// assignment is written through to the user defaults at once; nothing else touches those keys.
// Main thread only: observers run synchronously inside the setter, before the value is stored.
class AppPreferences {
public:
    // Loads every property from `defaults`, which must outlive this object. Loading never
    // writes: a stored value that cannot be read stays in the store until its property is next
    // assigned. A stored rules or profiles document that does not load whole is then first kept
    // under its key followed by kUnreadableSuffix, and `log` (if any) is told in one line.
    explicit AppPreferences(KeyValueStore& defaults, LogSink* log = nullptr);
    AppPreferences(const AppPreferences&) = delete;
    AppPreferences& operator=(const AppPreferences&) = delete;

    // Reveal on hover (stored under a key with an older name).
    bool autoRehide() const { return autoRehide_.value(); }
    void setAutoRehide(bool value);
    const Observable<bool>& autoRehideChanges() const { return autoRehide_; }

    bool collapseAtLaunch() const { return collapseAtLaunch_.value(); }
    void setCollapseAtLaunch(bool value);
    const Observable<bool>& collapseAtLaunchChanges() const { return collapseAtLaunch_; }

    HotKeyOption hotKey() const { return hotKey_.value(); }
    void setHotKey(HotKeyOption value);
    const Observable<HotKeyOption>& hotKeyChanges() const { return hotKey_; }

    // Unclamped here; the spacer manager keeps it within what it can show.
    std::int64_t spacerCount() const { return spacerCount_.value(); }
    void setSpacerCount(std::int64_t value);
    const Observable<std::int64_t>& spacerCountChanges() const { return spacerCount_; }

    // "" when no profile is active.
    const std::string& activeProfile() const { return activeProfile_.value(); }
    void setActiveProfile(std::string value);
    const Observable<std::string>& activeProfileChanges() const { return activeProfile_; }

    const Profiles& profiles() const { return profiles_.value(); }
    void setProfiles(Profiles value);
    const Observable<Profiles>& profilesChanges() const { return profiles_; }

    const SectionRules& sectionByBundleID() const { return sectionByBundleID_.value(); }
    void setSectionByBundleID(SectionRules value);
    const Observable<SectionRules>& sectionByBundleIDChanges() const { return sectionByBundleID_; }

    // Emitted before any property announces a change, for views that redraw as a whole.
    const Signal<>& objectWillChange() const { return objectWillChange_; }

    // Inserts or replaces one rule; `visible` is stored as an explicit rule, never removed.
    void setSection(MenuBarSection section, const std::string& bundleID);

    // Profiles: named copies of the whole set of rules. Names are compared exactly.
    // Saves a copy of the current rules under `name` (replacing any profile of that name) and
    // makes it the active profile; an empty name is ignored.
    void saveProfile(const std::string& name);
    // Replaces the rules with the profile's and makes it active; for an unknown name the rules
    // stay and no profile is active.
    void switchProfile(const std::string& name);
    // Removes the profile (rewriting the stored profiles even when there was none); deleting the
    // active profile leaves its rules in force with no profile active.
    void deleteProfile(const std::string& name);

    // The stored rules and profiles hold what the user built up over time, and a single odd
    // entry makes a document load as empty or partly: the original is kept beside it before it
    // is first written over, under "quillet.sectionRules.unreadable" or
    // "quillet.profiles.unreadable" (the most recent one only).
    static constexpr std::string_view kUnreadableSuffix = ".unreadable";

private:
    void writeDocument(const std::string& key, const std::optional<Bytes>& data);

    template <class T> void assign(Observable<T>& property, T value) {
        objectWillChange_.emit();
        property.set(std::move(value));
    }

    KeyValueStore& defaults_;
    LogSink* log_;
    // Stored documents that did not load whole, as they were stored, by key, until backed up.
    // Filled while the properties below load.
    std::map<std::string, StoredValue> unreadable_;
    Signal<> objectWillChange_;
    Observable<bool> autoRehide_;
    Observable<bool> collapseAtLaunch_;
    Observable<HotKeyOption> hotKey_;
    Observable<std::int64_t> spacerCount_;
    Observable<std::string> activeProfile_;
    Observable<Profiles> profiles_;
    Observable<SectionRules> sectionByBundleID_;
};

} // namespace quillet
