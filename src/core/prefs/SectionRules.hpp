#pragma once

#include "core/ports/KeyValueStore.hpp"
#include "core/prefs/MenuBarSection.hpp"

#include <map>
#include <optional>
#include <string>

namespace quillet {

// Rule key (a bundle identifier, or "sys:" and a system item's window name) to its section.
using SectionRules = std::map<std::string, MenuBarSection>;
// Profile name to the rules it holds.
using Profiles = std::map<std::string, SectionRules>;

// The stored forms of the rules and the profiles: UTF-8 JSON text, one object whose members are
// rule keys with raw section values (for profiles, one such object per profile name).
namespace SectionRulesCoding {

// Nothing when a key or a name is not valid UTF-8, which JSON cannot carry.
std::optional<Bytes> encode(const SectionRules& rules);
std::optional<Bytes> encode(const Profiles& profiles);

// What a stored document yields, and whether it yielded all of it: false when the document was
// unreadable as a whole or lost members that are not raw section values, so that the caller
// knows that writing over it would destroy something the user stored.
template <class T> struct Decoded {
    T value;
    bool whole = true;
};

// Anything but a JSON object of strings (of objects of strings, for profiles), or a text beyond
// the bounds of stored JSON, decodes to no rules at all; within a well-formed document, members
// whose value is not a raw section value are dropped one by one. A profile left with no rules is
// kept.
Decoded<SectionRules> decodeRules(const Bytes& data);
Decoded<Profiles> decodeProfiles(const Bytes& data);

} // namespace SectionRulesCoding

} // namespace quillet
