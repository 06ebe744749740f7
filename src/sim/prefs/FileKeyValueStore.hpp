#pragma once

#include "core/ports/KeyValueStore.hpp"
#include "core/ports/LogSink.hpp"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>

namespace quillet::sim {

// User defaults kept in a JSON file, so that simulated runs remember their settings from one
// invocation to the next. The file is one object: Booleans, integers, reals and strings as
// themselves, byte blobs as {"data": "<base64>"}. It is read once, at construction, and
// rewritten whole after every write.
//
// A file that is not a JSON object is reported in one line and left as it is until a setting is
// next written, which replaces it. Members of any other form read as absent and are kept.
class FileKeyValueStore : public KeyValueStore {
public:
    FileKeyValueStore(std::filesystem::path path, LogSink& log);

    StoredValue value(const std::string& key) const override;

    void setBool(const std::string& key, bool value) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void setString(const std::string& key, const std::string& value) override;
    void setData(const std::string& key, const Bytes& value) override;

private:
    void write(const std::string& key, nlohmann::json member);

    std::filesystem::path path_;
    LogSink& log_;
    nlohmann::json document_ = nlohmann::json::object();
};

} // namespace quillet::sim
