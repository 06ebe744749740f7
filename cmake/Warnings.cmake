# Warning and sanitizer flags shared by every target of the project.
add_library(quillet_warnings INTERFACE)
target_compile_options(quillet_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                  -Wno-sign-conversion)
if(QUILLET_WERROR)
    target_compile_options(quillet_warnings INTERFACE -Werror)
endif()
# GCC 12 at -O2 inlines std::string's own copies and reports them as overlapping, with sizes of
# exabytes at negative offsets (GCC bug 105329): a false -Wrestrict that warnings-as-errors turns
# into a failed Release build wherever a string is built from pieces. A directory option, not one
# of quillet_warnings', so that the clang of the macOS check never sees a GCC-only flag.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict)
endif()

if(QUILLET_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()
