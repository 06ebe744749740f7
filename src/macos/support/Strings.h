#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace quillet::macos {

// Conversions between the core's UTF-8 strings and the platform's strings.

// The UTF-8 text of a CF string; nullopt when it cannot be encoded (a lone surrogate).
std::optional<std::string> utf8String(CFStringRef string);
// The same for an NSString; nullopt for nil too.
std::optional<std::string> utf8String(NSString* string);

// An NSString of UTF-8 text; nil when the bytes are not valid UTF-8.
NSString* nsString(std::string_view text);
// The same, with "" instead of nil, for AppKit titles and texts that may not be nil: text that is
// not UTF-8 shows as nothing.
NSString* nonNilString(std::string_view text);

} // namespace quillet::macos
