#include "core/prefs/AppPreferences.hpp"

// Profiles work only through the published properties, so each step is announced and written
// through like any other assignment.
namespace quillet {

void AppPreferences::saveProfile(const std::string& name) {
    if (name.empty()) {
        return;
    }
    Profiles updated = profiles();
    updated[name] = sectionByBundleID();
    setProfiles(std::move(updated));
    setActiveProfile(name);
}

void AppPreferences::switchProfile(const std::string& name) {
    auto profile = profiles().find(name);
    if (profile == profiles().end()) {
        setActiveProfile("");
        return;
    }
    setSectionByBundleID(profile->second);
    setActiveProfile(name);
}

void AppPreferences::deleteProfile(const std::string& name) {
    Profiles updated = profiles();
    updated.erase(name);
    setProfiles(std::move(updated));
    if (activeProfile() == name) {
        setActiveProfile("");
    }
}

} // namespace quillet
