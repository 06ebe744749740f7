#pragma once

#include "core/ports/KeyValueStore.hpp"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>

#include <unistd.h>

namespace quillet::testing {

inline Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

inline StoredValue storedText(std::string text) {
    return StoredValue{std::move(text)};
}
inline StoredValue storedData(std::string_view text) {
    return StoredValue{bytesOf(text)};
}

// The JSON document stored as data under `key`; a discarded value when there is none.
inline nlohmann::json storedJSON(const KeyValueStore& store, const std::string& key) {
    const StoredValue value = store.value(key);
    const auto* data = std::get_if<Bytes>(&value.content);
    if (!data) {
        return nlohmann::json(nlohmann::json::value_t::discarded);
    }
    return nlohmann::json::parse(data->begin(), data->end(), nullptr, false);
}

// A file path of the running test's own, so that concurrently running tests never share one.
inline std::filesystem::path scratchFile(std::string_view name) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string unique = std::string(test->test_suite_name()) + "-" + test->name() + "-" +
                         std::to_string(::getpid()) + "-" + std::string(name);
    std::replace(unique.begin(), unique.end(), '/', '-');
    return std::filesystem::path(::testing::TempDir()) / unique;
}

} // namespace quillet::testing
