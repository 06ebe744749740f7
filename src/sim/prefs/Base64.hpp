#pragma once

#include "core/ports/KeyValueStore.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quillet::sim {

// The standard alphabet with padding, as property lists and the settings file carry byte blobs.
std::string base64Encoded(const Bytes& bytes);

// Strict: whole groups of four, only the alphabet, padding only at the very end.
std::optional<Bytes> base64Decoded(std::string_view text);

} // namespace quillet::sim
