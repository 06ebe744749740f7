#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace quillet {

using Bytes = std::vector<std::uint8_t>;

// One stored setting, typed as the store holds it. The store does not coerce: the core decides
// how a Boolean stored where an integer was expected reads (as NSUserDefaults would), and tells a
// stored Boolean from a number. Kinds the core never writes (dates, arrays, dictionaries) arrive
// as absent.
struct StoredValue {
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Bytes> content;

    bool isAbsent() const { return std::holds_alternative<std::monostate>(content); }
    friend bool operator==(const StoredValue&, const StoredValue&) = default;
};

// The application's user defaults: settings by key, persisted across launches (NSUserDefaults
// on a Mac). Writes take effect at once for later reads.
class KeyValueStore {
public:
    virtual ~KeyValueStore() = default;

    virtual StoredValue value(const std::string& key) const = 0;

    virtual void setBool(const std::string& key, bool value) = 0;
    virtual void setInteger(const std::string& key, std::int64_t value) = 0;
    virtual void setReal(const std::string& key, double value) = 0;
    virtual void setString(const std::string& key, const std::string& value) = 0;
    virtual void setData(const std::string& key, const Bytes& value) = 0;
};

} // namespace quillet
