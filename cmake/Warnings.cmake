# Warning and sanitizer flags shared by every target of the project.
add_library(quillet_warnings INTERFACE)
target_compile_options(quillet_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                  -Wno-sign-conversion)
if(QUILLET_WERROR)
    target_compile_options(quillet_warnings INTERFACE -Werror)
endif()

if(QUILLET_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()
