#include "sim/prefs/MemoryKeyValueStore.hpp"

namespace quillet::sim {

StoredValue MemoryKeyValueStore::value(const std::string& key) const {
    auto found = contents_.find(key);
    return found == contents_.end() ? StoredValue{} : found->second;
}

void MemoryKeyValueStore::setBool(const std::string& key, bool value) {
    put(key, {value});
}

void MemoryKeyValueStore::setInteger(const std::string& key, std::int64_t value) {
    put(key, {value});
}

void MemoryKeyValueStore::setReal(const std::string& key, double value) {
    put(key, {value});
}

void MemoryKeyValueStore::setString(const std::string& key, const std::string& value) {
    put(key, {value});
}

void MemoryKeyValueStore::setData(const std::string& key, const Bytes& value) {
    put(key, {value});
}

void MemoryKeyValueStore::put(const std::string& key, StoredValue value) {
    if (value.isAbsent()) {
        contents_.erase(key);
    } else {
        contents_[key] = std::move(value);
    }
}

} // namespace quillet::sim
