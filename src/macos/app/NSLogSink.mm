#include "macos/app/NSLogSink.h"

#import "macos/support/Strings.h"

#import <Foundation/Foundation.h>

namespace quillet::macos {

void NSLogSink::log(std::string_view line) {
    // The line is an argument, never the format: a path with a "%" in it must print as it is.
    NSLog(@"%@", nsString(line));
}

} // namespace quillet::macos
