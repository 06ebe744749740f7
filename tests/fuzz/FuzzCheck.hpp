#pragma once

#include <cstdio>
#include <cstdlib>

// A property the fuzzed code must keep: when it does not, the input is a failure that libFuzzer
// keeps, just like a crash.
#define QUILLET_FUZZ_CHECK(condition)                                                              \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: property failed: %s\n", __FILE__, __LINE__, #condition);  \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
