#include "sim/prefs/FileKeyValueStore.hpp"

#include "sim/BoundedFile.hpp"
#include "sim/prefs/Base64.hpp"

#include <cerrno>
#include <cstring>
#include <limits>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillet::sim {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr std::string_view kDataTag = "data";
// Enough for any real chain of links, and an end to a loop of them.
constexpr int kSymlinkHops = 40;

StoredValue storedValue(const json& member) {
    switch (member.type()) {
    case json::value_t::boolean:
        return {member.get<bool>()};
    case json::value_t::number_integer:
        return {member.get<std::int64_t>()};
    case json::value_t::number_unsigned: {
        const auto number = member.get<std::uint64_t>();
        if (number <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
            return {static_cast<std::int64_t>(number)};
        }
        return {static_cast<double>(number)};
    }
    case json::value_t::number_float:
        return {member.get<double>()};
    case json::value_t::string:
        return {member.get<std::string>()};
    case json::value_t::object:
        if (member.size() == 1 && member.contains(kDataTag) && member[kDataTag].is_string()) {
            if (auto bytes = base64Decoded(member[kDataTag].get_ref<const std::string&>())) {
                return {std::move(*bytes)};
            }
        }
        return {};
    default:
        return {};
    }
}

// The file a path names, through any chain of symbolic links, even one whose end is missing
// yet: replacing the link itself by a file would cut the user's link.
fs::path resolved(fs::path path) {
    std::error_code error;
    for (int hop = 0; hop < kSymlinkHops && fs::is_symlink(path, error); ++hop) {
        fs::path target = fs::read_symlink(path, error);
        if (error) {
            break;
        }
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    return path;
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

std::string withSuffix(const fs::path& path, std::string_view suffix) {
    return path.string() + std::string(suffix);
}

// An exclusive advisory lock for one read-change-write, taken on the folder that holds the file.
// Not on the settings file itself: each write replaces that file, and a lock on the replaced one
// would exclude nobody; and not on a lock file of its own, which would be left beside the
// user's file.
class WriteLock {
public:
    explicit WriteLock(const fs::path& file)
        : fd_(::open(folderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (fd_ >= 0 && ::flock(fd_, LOCK_EX) != 0) {
            ::close(fd_);
            fd_ = -1;
        }
    }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;
    ~WriteLock() {
        if (fd_ >= 0) {
            ::close(fd_); // releases the lock
        }
    }

    bool held() const { return fd_ >= 0; }

private:
    int fd_;
};

// Written in full beside the file, flushed to the disk, then renamed over it, so that an
// interrupted run leaves the old file or the new one, never half of one. The file keeps its
// permissions. The reason it failed, or "".
std::string replaceFile(const fs::path& path, const std::string& text) {
    const std::string temporary = withSuffix(path, ".tmp");
    struct stat original {};
    const bool existed = ::stat(path.c_str(), &original) == 0;
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        return temporary + ": " + std::strerror(errno);
    }
    bool written = !existed || ::fchmod(fd, original.st_mode & 07777) == 0;
    for (std::size_t done = 0; written && done < text.size();) {
        const ssize_t count = ::write(fd, text.data() + done, text.size() - done);
        written = count > 0 || (count < 0 && errno == EINTR);
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    written = written && ::fsync(fd) == 0;
    const int writeError = errno;
    written = ::close(fd) == 0 && written;
    if (!written || ::rename(temporary.c_str(), path.c_str()) != 0) {
        const std::string reason = std::strerror(written ? errno : writeError);
        ::unlink(temporary.c_str());
        return (written ? path.string() : temporary) + ": " + reason;
    }
    return "";
}

} // namespace

FileKeyValueStore::FileKeyValueStore(std::filesystem::path path, LogSink& log)
    : path_(resolved(path)), shownPath_(std::move(path)), log_(log) {
    if (auto document = readFile()) {
        document_ = std::move(*document);
    }
}

std::optional<SettingsDocument> FileKeyValueStore::readFile() {
    BoundedFile file = readBoundedFile(path_);
    if (!file.exists) {
        return SettingsDocument(); // a first run: every setting has its default
    }
    std::string problem = std::move(file.problem);
    if (file.text) {
        ParsedSettings parsed = SettingsDocument::parse(*file.text);
        if (parsed.document) {
            return std::move(parsed.document);
        }
        problem = std::move(parsed.problem);
    }
    log_.log("quillet-sim: settings file " + shownPath_.string() + " " + problem +
             "; it is left as it is, and settings changed in this run are not saved");
    savesToFile_ = false;
    return std::nullopt;
}

StoredValue FileKeyValueStore::value(const std::string& key) const {
    auto member = document_.value(key);
    return member ? storedValue(*member) : StoredValue{};
}

void FileKeyValueStore::setBool(const std::string& key, bool value) {
    write(key, value);
}

void FileKeyValueStore::setInteger(const std::string& key, std::int64_t value) {
    write(key, value);
}

void FileKeyValueStore::setReal(const std::string& key, double value) {
    write(key, value);
}

void FileKeyValueStore::setString(const std::string& key, const std::string& value) {
    write(key, value);
}

void FileKeyValueStore::setData(const std::string& key, const Bytes& value) {
    write(key, json{{kDataTag, base64Encoded(value)}});
}

void FileKeyValueStore::write(const std::string& key, const json& member) {
    SettingsDocument updated = document_;
    if (!updated.set(key, member)) {
        log_.log("quillet-sim: setting " + key + " is not UTF-8 text; it is not saved");
        return;
    }
    if (!savesToFile_ || !writeThrough(key, member)) {
        document_ = std::move(updated); // this run still sees its own change
    }
}

bool FileKeyValueStore::writeThrough(const std::string& key, const json& member) {
    WriteLock lock(path_);
    if (!lock.held()) {
        log_.log("quillet-sim: cannot write settings file " + shownPath_.string() + ": " +
                 std::strerror(errno));
        return false;
    }
    // What another process wrote since this one last looked is kept: only `key` changes.
    std::optional<SettingsDocument> current = readFile();
    if (!current) {
        return false;
    }
    current->set(key, member);
    if (std::string failure = replaceFile(path_, current->text()); !failure.empty()) {
        log_.log("quillet-sim: cannot write settings file " + failure);
        return false;
    }
    document_ = std::move(*current);
    return true;
}

} // namespace quillet::sim
