#import "macos/support/Strings.h"

#include <cstring>

namespace quillet::macos {

std::optional<std::string> utf8String(CFStringRef string) {
    // The fast path answers only when the string already holds UTF-8 bytes; otherwise convert.
    if (const char* bytes = CFStringGetCStringPtr(string, kCFStringEncodingUTF8)) {
        return std::string(bytes);
    }
    // Lengths count UTF-16 units: room for the worst case in bytes plus the terminating NUL.
    // An overflowing length is answered with kCFNotFound (-1).
    const CFIndex capacity =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    if (capacity <= 0) {
        return std::nullopt;
    }
    std::string buffer(static_cast<std::size_t>(capacity), '\0');
    if (!CFStringGetCString(string, buffer.data(), capacity, kCFStringEncodingUTF8)) {
        return std::nullopt;
    }
    buffer.resize(std::strlen(buffer.c_str()));
    return buffer;
}

std::optional<std::string> utf8String(NSString* string) {
    if (string == nil) {
        return std::nullopt;
    }
    return utf8String((__bridge CFStringRef)string);
}

NSString* nsString(std::string_view text) {
    // An empty view may carry a null pointer, which initWithBytes: does not accept.
    if (text.empty()) {
        return @"";
    }
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

NSString* nonNilString(std::string_view text) {
    NSString* string = nsString(text);
    return string != nil ? string : @"";
}

} // namespace quillet::macos
