# SPDX-License-Identifier: Apache-2.0
#
# Settings of every target of ours. Pixels must not depend on the compiler's liberties with arithmetic: a
# fused multiply-add rounds once in place of twice, so contraction is off, and fast-math is never on.
add_library(vastrelline_settings INTERFACE)
target_compile_options(vastrelline_settings INTERFACE -ffp-contract=off)
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(i[3-6]86|x86|x86_64|AMD64)$")
    # The old floating-point unit keeps more bits than a double has, and rounds some results twice.
    target_compile_options(vastrelline_settings INTERFACE -msse2 -mfpmath=sse)
endif()
if(VASTRELLINE_DEVELOP)
    target_compile_options(vastrelline_settings INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Werror)
endif()
if(WIN32)
    # The wide functions of Windows by name, and no macros min and max.
    target_compile_definitions(vastrelline_settings INTERFACE UNICODE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

# VASTRELLINE_SANITIZE is a list for -fsanitize=, such as "address,undefined".
set(VASTRELLINE_SANITIZE "" CACHE STRING "Sanitizers to build everything with")
set(VASTRELLINE_SANITIZE_FLAGS "")
if(VASTRELLINE_SANITIZE)
    set(VASTRELLINE_SANITIZE_FLAGS
        -fsanitize=${VASTRELLINE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options(${VASTRELLINE_SANITIZE_FLAGS})
    add_link_options(-fsanitize=${VASTRELLINE_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # A false alarm in the standard library's own regular expressions, under sanitizers only.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()
if(VASTRELLINE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
