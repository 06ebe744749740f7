#include "core/prefs/SectionRules.hpp"

#include "core/support/BoundedJson.hpp"

#include <nlohmann/json.hpp>

#include <string_view>

namespace quillet::SectionRulesCoding {

namespace {

using nlohmann::json;

json rulesObject(const SectionRules& rules) {
    json object = json::object();
    for (const auto& [key, section] : rules) {
        object[key] = rawValue(section);
    }
    return object;
}

std::optional<Bytes> serialized(const json& document) {
    try {
        const std::string text = document.dump();
        return Bytes(text.begin(), text.end());
    } catch (const json::exception&) {
        // The encoder refuses strings that are not valid UTF-8; the caller then stores nothing.
        return std::nullopt;
    }
}

// The whole document must be an object whose members are all strings: one member of another
// type makes the document unreadable, as for a strict decoder of a map of strings.
bool isObjectOfStrings(const json& value) {
    if (!value.is_object()) {
        return false;
    }
    for (const auto& member : value.items()) {
        if (!member.value().is_string()) {
            return false;
        }
    }
    return true;
}

// Only call on an object of strings. Clears `whole` when a member is dropped.
SectionRules knownSections(const json& object, bool& whole) {
    SectionRules rules;
    for (const auto& member : object.items()) {
        if (auto section = menuBarSection(member.value().get_ref<const std::string&>())) {
            rules.emplace(member.key(), *section);
        } else {
            whole = false;
        }
    }
    return rules;
}

json parsed(const Bytes& data) {
    const std::string_view text(reinterpret_cast<const char*>(data.data()), data.size());
    return parseBoundedJson(text).document.value_or(json(json::value_t::discarded));
}

} // namespace

std::optional<Bytes> encode(const SectionRules& rules) {
    return serialized(rulesObject(rules));
}

std::optional<Bytes> encode(const Profiles& profiles) {
    json object = json::object();
    for (const auto& [name, rules] : profiles) {
        object[name] = rulesObject(rules);
    }
    return serialized(object);
}

Decoded<SectionRules> decodeRules(const Bytes& data) {
    const json document = parsed(data);
    if (!isObjectOfStrings(document)) {
        return {{}, false};
    }
    Decoded<SectionRules> rules;
    rules.value = knownSections(document, rules.whole);
    return rules;
}

Decoded<Profiles> decodeProfiles(const Bytes& data) {
    const json document = parsed(data);
    if (!document.is_object()) {
        return {{}, false};
    }
    for (const auto& member : document.items()) {
        if (!isObjectOfStrings(member.value())) {
            return {{}, false};
        }
    }
    Decoded<Profiles> profiles;
    for (const auto& member : document.items()) {
        profiles.value.emplace(member.key(), knownSections(member.value(), profiles.whole));
    }
    return profiles;
}

} // namespace quillet::SectionRulesCoding
