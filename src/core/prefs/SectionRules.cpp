#include "core/prefs/SectionRules.hpp"

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

// Only call on an object of strings.
SectionRules knownSections(const json& object) {
    SectionRules rules;
    for (const auto& member : object.items()) {
        if (auto section = menuBarSection(member.value().get_ref<const std::string&>())) {
            rules.emplace(member.key(), *section);
        }
    }
    return rules;
}

json parsed(const Bytes& data) {
    return json::parse(data.begin(), data.end(), nullptr, /*allow_exceptions=*/false);
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

SectionRules decodeRules(const Bytes& data) {
    const json document = parsed(data);
    if (!isObjectOfStrings(document)) {
        return {};
    }
    return knownSections(document);
}

Profiles decodeProfiles(const Bytes& data) {
    const json document = parsed(data);
    if (!document.is_object()) {
        return {};
    }
    for (const auto& member : document.items()) {
        if (!isObjectOfStrings(member.value())) {
            return {};
        }
    }
    Profiles profiles;
    for (const auto& member : document.items()) {
        profiles.emplace(member.key(), knownSections(member.value()));
    }
    return profiles;
}

} // namespace quillet::SectionRulesCoding
