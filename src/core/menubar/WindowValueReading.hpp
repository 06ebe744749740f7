#pragma once

#include "core/ports/Geometry.hpp"
#include "core/ports/WindowListSource.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace quillet {

// Strict readings of window description values. A value of another type, or a number that does
// not fit exactly, reads as nothing; the caller picks the default.
std::optional<std::int64_t> readInteger(const WindowValue& value);
std::optional<std::int32_t> readInt32(const WindowValue& value);
std::optional<std::uint32_t> readUInt32(const WindowValue& value);
std::optional<std::string> readString(const WindowValue& value);
// A bounds dictionary ("X", "Y", "Width", "Height", all numbers), standardised so that width and
// height are never negative.
std::optional<Rect> readRect(const WindowValue& value);

} // namespace quillet
