# macos-check: compile-checks the Objective-C++ of src/macos on a machine without Apple's SDK.
#
# Every .mm file under src/macos is parsed by clang (-fsyntax-only) as Objective-C++ with ARC,
# against GNUstep's Foundation and AppKit headers, with tests/macos-check/AppleOnly.h forced in
# front of it: that header declares, exactly as Apple does, what Apple's SDK has and GNUstep lacks.
# So a message the receiver's class does not declare, a misspelled selector or an argument of the
# wrong type fails here, long before anyone builds on a Mac. What it cannot see (availability and
# deprecation for the deployment target, linking, behaviour) is left to the build on a Mac.
#
#   cmake --build <build dir> --target macos-check
#
# The target exists only off Apple platforms, where clang++ and GNUstep (gnustep-config) are
# installed; on a Mac the real build compiles these files.

if(APPLE)
    return()
endif()

find_program(QUILLET_MACOS_CHECK_CLANG NAMES clang++ clang++-14 DOC "clang++ for macos-check")
find_program(QUILLET_GNUSTEP_CONFIG NAMES gnustep-config DOC "GNUstep's gnustep-config")
if(NOT QUILLET_MACOS_CHECK_CLANG OR NOT QUILLET_GNUSTEP_CONFIG)
    message(STATUS "macos-check: off (needs clang++ and gnustep-config)")
    return()
endif()

set(_check_dir ${PROJECT_SOURCE_DIR}/tests/macos-check)
set(_generated_dir ${CMAKE_BINARY_DIR}/macos-check)
# The adapters include the core's headers, one of which quillet_core generates.
set(_core_generated_dir ${CMAKE_BINARY_DIR}/src/core/generated)

# GNUstep's configuration: its header directories and the macros its headers were built with.
execute_process(COMMAND ${QUILLET_GNUSTEP_CONFIG} --objc-flags
                OUTPUT_VARIABLE _gnustep_flags OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(_gnustep_flags UNIX_COMMAND "${_gnustep_flags}")
set(_gnustep_options)
foreach(_flag IN LISTS _gnustep_flags)
    if(_flag MATCHES "^-I(/.+)$")
        # System headers to us: their own warnings are not ours to fix.
        if(IS_DIRECTORY "${CMAKE_MATCH_1}")
            list(APPEND _gnustep_options -isystem "${CMAKE_MATCH_1}")
        endif()
    elseif(_flag MATCHES "^-D")
        list(APPEND _gnustep_options "${_flag}")
    endif()
endforeach()

# Debian builds GNUstep on GCC's Objective-C runtime, whose headers (objc/objc.h, objc/runtime.h)
# live in that compiler's own include directory.
execute_process(COMMAND ${QUILLET_GNUSTEP_CONFIG} --variable=CC
                OUTPUT_VARIABLE _gnustep_cc OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${_gnustep_cc} -print-file-name=include
                OUTPUT_VARIABLE _objc_include_dir OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
set(_runtime_header ${_objc_include_dir}/objc/runtime.h)
if(NOT EXISTS ${_runtime_header})
    message(FATAL_ERROR "macos-check: no Objective-C runtime headers in ${_objc_include_dir}")
endif()

# The check compiles with ARC, as the real build does, so that ARC's rules are checked too. One
# inline function of GCC's runtime.h reads `object->class_pointer` through an `id`, which clang
# refuses under ARC; a copy with that one access spelled out (a bridged cast to the runtime's own
# struct) is put ahead of the original. Everything else in it is untouched.
file(READ ${_runtime_header} _runtime)
set(_patches
    "return object->class_pointer"
    "return ((struct objc_object *)(__bridge void *)object)->class_pointer"
    "#include \"objc.h\""
    "#include <objc/objc.h>"
    "#include \"objc-decls.h\""
    "#include <objc/objc-decls.h>")
while(_patches)
    list(POP_FRONT _patches _original _replacement)
    string(FIND "${_runtime}" "${_original}" _at)
    if(_at EQUAL -1)
        message(FATAL_ERROR "macos-check: ${_runtime_header} no longer contains '${_original}'")
    endif()
    string(REPLACE "${_original}" "${_replacement}" _runtime "${_runtime}")
endwhile()
# Rewritten only when it changes, so that a new configure does not re-run every check.
file(WRITE ${_generated_dir}/runtime.h.new "${_runtime}")
configure_file(${_generated_dir}/runtime.h.new ${_generated_dir}/include/objc/runtime.h COPYONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${_runtime_header})

file(GLOB_RECURSE _check_headers CONFIGURE_DEPENDS ${_check_dir}/*.h)
file(GLOB_RECURSE _macos_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/macos/*.mm)

set(_check_command
    ${QUILLET_MACOS_CHECK_CLANG} -std=c++20 -x objective-c++ -fsyntax-only -fblocks -fobjc-arc
    # Apple's standard library, as on a Mac.
    -stdlib=libc++
    # Clang's ABI for GNUstep's own runtime: non-fragile, so ivars may live in @implementation.
    -fobjc-runtime=gnustep-2.0 -fexceptions -fobjc-exceptions
    # The app's build defines this 0 or 1; 1 checks the code that uses Sparkle.
    -DQUILLET_HAS_SPARKLE=1
    # The same warnings as every other target of the project, plus the Objective-C ones.
    $<TARGET_PROPERTY:quillet_warnings,INTERFACE_COMPILE_OPTIONS> -Werror -Wundeclared-selector
    -Wobjc-method-access -Wincompatible-pointer-types -Wobjc-missing-super-calls
    # Apple's stand-ins first, so that they replace GNUstep's headers where they must.
    -isystem ${_generated_dir}/include -isystem ${_check_dir}/sdk -isystem ${_check_dir}/gnustep
    ${_gnustep_options} -idirafter ${_objc_include_dir}
    # The project's own headers are not system headers: their warnings count.
    -I${PROJECT_SOURCE_DIR}/src -I${_core_generated_dir} -include ${_check_dir}/AppleOnly.h)

set(_stamps)
foreach(_source IN LISTS _macos_sources)
    file(RELATIVE_PATH _name ${PROJECT_SOURCE_DIR} ${_source})
    set(_stamp ${_generated_dir}/${_name}.checked)
    get_filename_component(_stamp_dir ${_stamp} DIRECTORY)
    add_custom_command(
        OUTPUT ${_stamp}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${_stamp_dir}
        COMMAND ${_check_command} -MD -MF ${_stamp}.d -MT ${_stamp} ${_source}
        COMMAND ${CMAKE_COMMAND} -E touch ${_stamp}
        DEPENDS ${_source} ${_check_headers}
                ${_core_generated_dir}/core/app/BundleIdentity.hpp
        DEPFILE ${_stamp}.d
        COMMENT "macos-check ${_name}"
        COMMAND_EXPAND_LISTS VERBATIM)
    list(APPEND _stamps ${_stamp})
endforeach()

add_custom_target(macos-check DEPENDS ${_stamps})
message(STATUS "macos-check: on (${QUILLET_MACOS_CHECK_CLANG}, GNUstep)")
