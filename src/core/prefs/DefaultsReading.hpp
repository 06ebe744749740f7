#pragma once

#include "core/ports/KeyValueStore.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace quillet {

// How NSUserDefaults' typed reads interpret whatever is stored under a key, so that settings
// written by hand (`defaults write`) or by an older build load as they would on a Mac.
namespace DefaultsReading {

// boolForKey: a Boolean as stored; a number is true unless zero; a string as NSString's
// boolValue reads it; anything else, or nothing, is false.
bool boolean(const StoredValue& value);

// A value that is a Boolean as the platform bridges one: a stored Boolean, or the number 0 or 1
// (what `defaults write … -int 0` and `-bool NO` both leave); nothing for anything else.
std::optional<bool> exactBoolean(const StoredValue& value);

// integerForKey: a Boolean is 1 or 0; a real is truncated toward zero (saturating); a string as
// NSString's integerValue reads it; anything else, or nothing, is 0.
std::int64_t integer(const StoredValue& value);

// stringForKey and dataForKey, for the kinds Quillet stores: only a stored string or a stored
// byte blob counts.
std::optional<std::string> string(const StoredValue& value);
std::optional<Bytes> data(const StoredValue& value);

// NSString's boolValue: after leading whitespace, an optional sign and leading zeros, true when
// the next character is one of "YyTt" or a digit 1 to 9; trailing characters are ignored.
bool stringBoolValue(std::string_view text);

// NSString's integerValue: leading whitespace, an optional sign, then decimal digits up to the
// first other character; 0 when there are none, the nearest limit on overflow.
std::int64_t stringIntegerValue(std::string_view text);

} // namespace DefaultsReading

} // namespace quillet
