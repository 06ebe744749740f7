#include "core/support/BoundedJson.hpp"
#include "sim/SimulatedLog.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace quillet {
namespace {

using testing::bytesOf;

class FileKeyValueStoreTest : public ::testing::Test {
protected:
    void SetUp() override { std::filesystem::remove(path); }
    void TearDown() override { std::filesystem::remove(path); }

    void writeFile(std::string_view text) { std::ofstream(path, std::ios::binary) << text; }
    std::string fileText() const {
        std::ifstream input(path, std::ios::binary);
        std::stringstream text;
        text << input.rdbuf();
        return text.str();
    }

    std::filesystem::path path = testing::scratchFile("defaults.json");
    sim::SimulatedLog log;
};

TEST_F(FileKeyValueStoreTest, EveryKindOfValueSurvivesAReopen) {
    Bytes everyByte;
    for (int b = 0; b < 256; ++b) {
        everyByte.push_back(static_cast<std::uint8_t>(b));
    }
    {
        sim::FileKeyValueStore store(path, log);
        EXPECT_TRUE(store.value("flag").isAbsent());
        store.setBool("flag", true);
        store.setInteger("count", std::numeric_limits<std::int64_t>::min());
        store.setString("name", "Home ✓ \"quoted\"");
        store.setData("blob", everyByte);
        store.setData("empty", {});
        store.setData("short", bytesOf("ab")); // a padded encoding
        store.setInteger("flag", 2);           // a key changes kind when rewritten
    }
    sim::FileKeyValueStore reopened(path, log);
    EXPECT_EQ(reopened.value("flag"), StoredValue{std::int64_t{2}});
    EXPECT_EQ(reopened.value("count"), StoredValue{std::numeric_limits<std::int64_t>::min()});
    EXPECT_EQ(reopened.value("name"), StoredValue{std::string("Home ✓ \"quoted\"")});
    EXPECT_EQ(reopened.value("blob"), StoredValue{everyByte});
    EXPECT_EQ(reopened.value("empty"), StoredValue{Bytes{}});
    EXPECT_EQ(reopened.value("short"), StoredValue{bytesOf("ab")});
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(FileKeyValueStoreTest, HandWrittenMembersReadAsTheirKindAndAreRewrittenAsWritten) {
    const std::vector<std::string> members{R"("real": 2.50)",
                                           R"("big": 18446744073709551615)",
                                           R"("huge": -123456789012345678901234567890)",
                                           R"("yes": false)",
                                           R"("blob": {"data": "TWFu"})",
                                           R"("badBase64": {"data": "TWF"})",
                                           R"("misplacedPad": {"data": "T=Fu"})",
                                           R"("tagged": {"data": "TWFu", "more": 1})",
                                           R"("list": [1, 2e3, {"deep": [0.1000]}])",
                                           R"("nothing": null)"};
    std::string text = "\xEF\xBB\xBF{";
    for (const std::string& member : members) {
        text += (text.size() > 4 ? ",\n\t" : "") + member;
    }
    writeFile(text + "}");
    sim::FileKeyValueStore store(path, log);
    EXPECT_EQ(store.value("real"), StoredValue{2.5});
    // Numbers beyond what a setting can hold read as the nearest real.
    EXPECT_EQ(store.value("big"), StoredValue{18446744073709551615.0});
    EXPECT_EQ(store.value("huge"), StoredValue{-123456789012345678901234567890.0});
    EXPECT_EQ(store.value("yes"), StoredValue{false});
    EXPECT_EQ(store.value("blob"), StoredValue{bytesOf("Man")});
    for (const char* absent : {"badBase64", "misplacedPad", "tagged", "list", "nothing"}) {
        EXPECT_TRUE(store.value(absent).isAbsent()) << absent;
    }

    // Writing another setting keeps every member exactly as it was written.
    store.setBool("yes", true);
    const std::string rewritten = fileText();
    for (const std::string& member : members) {
        if (!member.starts_with(R"("yes")")) {
            EXPECT_NE(rewritten.find(member), std::string::npos) << member;
        }
    }
    sim::FileKeyValueStore reopened(path, log);
    EXPECT_EQ(reopened.value("yes"), StoredValue{true});
    EXPECT_TRUE(log.lines().empty());
}

// A valid settings text, then seeded damage of the kinds hand edits and interrupted copies make,
// and the inputs that once exhausted the readers.
std::vector<std::string> damagedSettings() {
    const std::string valid = R"({"quillet.hotKey": "controlOptionB", "quillet.sectionRules": )"
                              R"({"data": "e30="}, "other": [1, {"x": null}]})";
    std::vector<std::string> texts{"", "[1]", "\"text\"", std::string(kJsonDepthLimit + 1, '[')};
    texts.push_back("{\"a\":" + std::string(5000, '[') + std::string(5000, ']') + "}");
    texts.push_back("{\"pad\": \"" + std::string(kJsonSizeLimit, ' ') + "\"}");
    std::mt19937 random(20261124);
    const std::string inserts = ",{}[]\":x\\";
    for (int i = 0; i < 300; ++i) {
        std::string text = valid;
        const std::size_t at = random() % text.size();
        switch (random() % 3) {
        case 0:
            text.resize(at);
            break;
        case 1:
            text.erase(at, 1);
            break;
        default:
            text.insert(at, 1, inserts[random() % inserts.size()]);
        }
        texts.push_back(text);
    }
    return texts;
}

TEST_F(FileKeyValueStoreTest, AFileThatCannotBeReadIsSaidOnceAndNeverWritten) {
    for (const std::string& text : damagedSettings()) {
        if (sim::SettingsDocument::parse(text).document) {
            continue; // damage that left a valid document
        }
        SCOPED_TRACE(text.substr(0, 80));
        writeFile(text);
        log = {};
        sim::FileKeyValueStore store(path, log);
        ASSERT_EQ(log.lines().size(), 1u);
        EXPECT_NE(log.lines()[0].find(path.string()), std::string::npos);
        EXPECT_FALSE(store.savesToFile());
        EXPECT_TRUE(store.value("quillet.hotKey").isAbsent());

        // The run goes on with its own settings in memory.
        store.setString("quillet.hotKey", "cmdShiftM");
        store.setData("quillet.sectionRules", bytesOf("{}"));
        EXPECT_EQ(store.value("quillet.hotKey"), StoredValue{std::string("cmdShiftM")});
        EXPECT_EQ(log.lines().size(), 1u);
        ASSERT_EQ(fileText(), text);
    }
    // A folder where the file should be cannot be read either.
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    log = {};
    sim::FileKeyValueStore store(path, log);
    store.setBool("flag", true);
    EXPECT_EQ(log.lines().size(), 1u);
    EXPECT_TRUE(std::filesystem::is_directory(path));
    std::filesystem::remove(path);
}

TEST_F(FileKeyValueStoreTest, StoresSharingAFileKeepEachOthersWrites) {
    sim::FileKeyValueStore first(path, log);
    sim::FileKeyValueStore second(path, log);
    first.setBool("first", true);
    second.setInteger("second", 2);
    first.setString("first", "again");
    EXPECT_EQ(first.value("second"), StoredValue{std::int64_t{2}});

    // Two processes writing at once: every write of each survives.
    const int writes = 30;
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    sim::FileKeyValueStore mine(path, log);
    for (int i = 0; i < writes; ++i) {
        mine.setInteger((child == 0 ? "child." : "parent.") + std::to_string(i), i);
    }
    if (child == 0) {
        std::_Exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    sim::FileKeyValueStore reopened(path, log);
    for (int i = 0; i < writes; ++i) {
        EXPECT_EQ(reopened.value("child." + std::to_string(i)), StoredValue{std::int64_t{i}});
        EXPECT_EQ(reopened.value("parent." + std::to_string(i)), StoredValue{std::int64_t{i}});
    }
    EXPECT_EQ(reopened.value("first"), StoredValue{std::string("again")});

    // A file another process left unreadable is not written over either.
    writeFile("{\"first\": tru");
    second.setBool("second", false);
    EXPECT_EQ(fileText(), "{\"first\": tru");
    EXPECT_FALSE(second.savesToFile());
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_F(FileKeyValueStoreTest, WritesGoThroughSymbolicLinksAndKeepThePermissions) {
    const std::filesystem::path target = testing::scratchFile("target.json");
    const std::filesystem::path missing = testing::scratchFile("not-yet.json");
    std::filesystem::remove(missing);
    std::ofstream(target) << R"({"kept": 1})";
    std::filesystem::permissions(target, std::filesystem::perms::owner_read |
                                             std::filesystem::perms::owner_write);
    for (const auto& [linked, expectKept] : {std::pair{target, true}, std::pair{missing, false}}) {
        std::filesystem::remove(path);
        std::filesystem::create_symlink(linked, path);
        sim::FileKeyValueStore store(path, log);
        store.setBool("flag", true);
        EXPECT_TRUE(std::filesystem::is_symlink(path));
        sim::FileKeyValueStore direct(linked, log);
        EXPECT_EQ(direct.value("flag"), StoredValue{true});
        EXPECT_EQ(direct.value("kept").isAbsent(), !expectKept);
    }
    EXPECT_EQ(std::filesystem::status(target).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_TRUE(log.lines().empty());
    std::filesystem::remove(target);
    std::filesystem::remove(missing);
}

TEST_F(FileKeyValueStoreTest, TextThatIsNotUtf8IsRefusedWithoutLosingTheFile) {
    sim::FileKeyValueStore store(path, log);
    store.setString("name", "kept");
    store.setString("name", "bad \xff");
    store.setString("other\xfe", "x");
    EXPECT_EQ(log.lines().size(), 2u);
    EXPECT_EQ(store.value("name"), StoredValue{std::string("kept")});
    EXPECT_TRUE(store.value("other\xfe").isAbsent());

    store.setInteger("count", 1); // the store is still writable
    sim::FileKeyValueStore reopened(path, log);
    EXPECT_EQ(reopened.value("name"), StoredValue{std::string("kept")});
    EXPECT_EQ(reopened.value("count"), StoredValue{std::int64_t{1}});
}

} // namespace
} // namespace quillet
