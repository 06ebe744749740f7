#pragma once

#include "core/ports/KeyValueStore.hpp"

#include <map>
#include <string>

namespace quillet::sim {

// User defaults held in memory, for tests and simulated runs that must not share state. A test
// can plant any value, as another build or a hand-edited defaults domain would have left it.
class MemoryKeyValueStore : public KeyValueStore {
public:
    StoredValue value(const std::string& key) const override;

    void setBool(const std::string& key, bool value) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void setReal(const std::string& key, double value) override;
    void setString(const std::string& key, const std::string& value) override;
    void setData(const std::string& key, const Bytes& value) override;

    // Stores any value, an absent one removes the key.
    void put(const std::string& key, StoredValue value);
    const std::map<std::string, StoredValue>& contents() const { return contents_; }

private:
    std::map<std::string, StoredValue> contents_;
};

} // namespace quillet::sim
