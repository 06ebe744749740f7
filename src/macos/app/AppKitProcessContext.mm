#include "macos/app/AppKitProcessContext.h"

#import "macos/support/Strings.h"

#import <Foundation/Foundation.h>

#include <cstdio>

namespace quillet::macos {

AppKitProcessContext::AppKitProcessContext() {
    for (NSString* argument in [[NSProcessInfo processInfo] arguments]) {
        // Flags are matched by whole-element equality, so an argument that cannot be written as
        // UTF-8 matches none of them, as an empty one does.
        arguments_.push_back(utf8String(argument).value_or(std::string()));
    }
}

Pid AppKitProcessContext::processIdentifier() const {
    return [[NSProcessInfo processInfo] processIdentifier];
}

std::string AppKitProcessContext::homeDirectory() const {
    return utf8String(NSHomeDirectory()).value_or(std::string());
}

int AppKitProcessContext::operatingSystemMajorVersion() const {
    // Binaries built with an SDK older than macOS 26's are told 16 instead of 26; the app is built
    // with the current SDK.
    return static_cast<int>([[NSProcessInfo processInfo] operatingSystemVersion].majorVersion);
}

void AppKitProcessContext::writeStandardOutput(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::optional<std::string> AppKitProcessContext::writeFile(const std::string& path,
                                                           std::string_view bytes) {
    // A file URL cannot be made of an empty path; say so as the platform says it of a bad name.
    if (path.empty()) {
        NSError* invalid = [NSError errorWithDomain:NSCocoaErrorDomain
                                               code:NSFileWriteInvalidFileNameError
                                           userInfo:nil];
        return utf8String([invalid localizedDescription]).value_or(std::string());
    }
    NSString* filePath =
        [[NSFileManager defaultManager] stringWithFileSystemRepresentation:path.c_str()
                                                                    length:path.size()];
    NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
    NSError* error = nil;
    // No options: the write is not atomic, and an existing file is replaced.
    if ([data writeToURL:[NSURL fileURLWithPath:filePath] options:0 error:&error]) {
        return std::nullopt;
    }
    return utf8String([error localizedDescription]).value_or(std::string());
}

} // namespace quillet::macos
