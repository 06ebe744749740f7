#pragma once

#include "core/ports/KeyValueStore.hpp"
#include "core/ports/LogSink.hpp"
#include "sim/prefs/SettingsDocument.hpp"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>

namespace quillet::sim {

// User defaults kept in a JSON file, so that simulated runs remember their settings from one
// invocation to the next. The file is one object: Booleans, integers, reals and strings as
// themselves, byte blobs as {"data": "<base64>"}. Members of any other form read as absent and
// are kept exactly as written.
//
// The file holds what the user saved, so it is never written over unless it was read in full: a
// file that exists but cannot be read, or is not a JSON object within the bounds of what Quillet
// reads, is reported in one line and left as it is, and the run goes on with its settings in
// memory only (as the app goes on with its defaults). Every write re-reads the file under an
// advisory lock and changes only its own member, so that two processes sharing the file never
// drop each other's settings, and replaces the file atomically, through a symbolic link if the
// path is one.
class FileKeyValueStore : public KeyValueStore {
public:
    FileKeyValueStore(std::filesystem::path path, LogSink& log);

    StoredValue value(const std::string& key) const override;

    void setBool(const std::string& key, bool value) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void setReal(const std::string& key, double value) override;
    void setString(const std::string& key, const std::string& value) override;
    void setData(const std::string& key, const Bytes& value) override;

    // False once the file turned out not to be readable: nothing more is written to it.
    bool savesToFile() const { return savesToFile_; }

private:
    void write(const std::string& key, const nlohmann::json& member);
    // Re-reads the file and writes it back with `key` set; false when that is not possible.
    bool writeThrough(const std::string& key, const nlohmann::json& member);
    // The file as it now is: an empty document when it does not exist; nothing, reported, when
    // it cannot be read, after which the store saves nothing.
    std::optional<SettingsDocument> readFile();

    std::filesystem::path path_; // the file itself, any symbolic links followed
    std::filesystem::path shownPath_;
    LogSink& log_;
    SettingsDocument document_;
    bool savesToFile_ = true;
};

} // namespace quillet::sim
