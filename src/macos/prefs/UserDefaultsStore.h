#pragma once

#include "core/ports/KeyValueStore.hpp"

#include <memory>

namespace quillet::macos {

// The application's standard user defaults (NSUserDefaults), taken once at construction. Values
// pass through as NSUserDefaults holds them; how they read is the core's business.
class UserDefaultsStore : public KeyValueStore {
public:
    UserDefaultsStore();
    ~UserDefaultsStore() override;
    UserDefaultsStore(const UserDefaultsStore&) = delete;
    UserDefaultsStore& operator=(const UserDefaultsStore&) = delete;

    StoredValue value(const std::string& key) const override;

    void setBool(const std::string& key, bool value) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void setReal(const std::string& key, double value) override;
    void setString(const std::string& key, const std::string& value) override;
    void setData(const std::string& key, const Bytes& value) override;

private:
    // Holds the NSUserDefaults object; this header is also read by plain C++.
    struct Defaults;
    std::unique_ptr<Defaults> defaults_;
};

} // namespace quillet::macos
