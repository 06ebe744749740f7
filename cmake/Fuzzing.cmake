# The libFuzzer build (-DQUILLET_FUZZ=ON, with CC=clang CXX=clang++ in a build folder of its own):
# every library is instrumented for coverage and checked by AddressSanitizer and UBSan, and the
# targets in tests/fuzz link libFuzzer's driver. The ordinary GCC builds never see these flags.
option(QUILLET_FUZZ "Build the libFuzzer targets of tests/fuzz (clang only)" OFF)

if(QUILLET_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "QUILLET_FUZZ needs clang: configure with CC=clang CXX=clang++")
    endif()
    # Clang 14 cannot assemble coroutines instrumented for coverage together with its check of
    # the types of called functions (a C concern), so that one check is left out.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=function
                        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
