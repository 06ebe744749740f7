#include "sim/SimulatedLog.hpp"
#include "sim/prefs/FileKeyValueStore.hpp"

#include "prefs/PrefsTesting.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

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

TEST_F(FileKeyValueStoreTest, HandWrittenMembersReadAsTheirKindOrAsAbsent) {
    writeFile(R"({"real": 2.5, "big": 18446744073709551615, "yes": false,
                  "blob": {"data": "TWFu"}, "badBase64": {"data": "TWF"},
                  "misplacedPad": {"data": "T=Fu"}, "tagged": {"data": "TWFu", "more": 1},
                  "list": [1, 2], "nothing": null})");
    sim::FileKeyValueStore store(path, log);
    EXPECT_EQ(store.value("real"), StoredValue{2.5});
    EXPECT_EQ(store.value("big"), StoredValue{18446744073709551615.0});
    EXPECT_EQ(store.value("yes"), StoredValue{false});
    EXPECT_EQ(store.value("blob"), StoredValue{bytesOf("Man")});
    for (const char* absent : {"badBase64", "misplacedPad", "tagged", "list", "nothing"}) {
        EXPECT_TRUE(store.value(absent).isAbsent()) << absent;
    }

    // Members the store cannot read are kept when another setting is written.
    store.setBool("flag", true);
    sim::FileKeyValueStore reopened(path, log);
    EXPECT_EQ(reopened.value("real"), StoredValue{2.5});
    EXPECT_NE(fileText().find("\"list\""), std::string::npos);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(FileKeyValueStoreTest, ACorruptFileIsReportedOnceAndReplacedOnlyByTheNextWrite) {
    for (std::string_view corrupt :
         {std::string_view("{\"flag\": tru"), std::string_view("[1]"), std::string_view("")}) {
        writeFile(corrupt);
        log = {};
        sim::FileKeyValueStore store(path, log);
        ASSERT_EQ(log.lines().size(), 1u);
        EXPECT_NE(log.lines()[0].find(path.string()), std::string::npos);
        EXPECT_TRUE(store.value("flag").isAbsent());
        EXPECT_EQ(fileText(), corrupt);

        store.setBool("flag", true);
        EXPECT_EQ(log.lines().size(), 1u);
        sim::FileKeyValueStore reopened(path, log);
        EXPECT_EQ(reopened.value("flag"), StoredValue{true});
        EXPECT_EQ(log.lines().size(), 1u);
    }
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
