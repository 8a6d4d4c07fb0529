# SPDX-License-Identifier: Apache-2.0
#
# What compiler and linker can do so that a fault in memory ends a host and does not hand it over. No result depends on
# it. docs/hardening.md tells what each does, and a test looks for all of it in the built files.
option(VASTRELLINE_HARDENING "Build with the protections of compiler and linker" ON)
add_library(vastrelline_hardening INTERFACE)
target_link_libraries(vastrelline_settings INTERFACE vastrelline_hardening)
if(VASTRELLINE_HARDENING)
    # A canary before the return address of every function that has an array.
    target_compile_options(vastrelline_hardening INTERFACE -fstack-protector-strong)
    if(NOT VASTRELLINE_SANITIZE AND NOT VASTRELLINE_FUZZ)
        # Copies into buffers of known size are held to it. It needs an optimiser, and sanitizers look closer.
        target_compile_options(vastrelline_hardening INTERFACE
            "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    endif()
    if(WIN32)
        target_link_options(vastrelline_hardening INTERFACE
            -fstack-protector-strong LINKER:--dynamicbase LINKER:--nxcompat)
        if(CMAKE_SIZEOF_VOID_P EQUAL 8)
            target_link_options(vastrelline_hardening INTERFACE LINKER:--high-entropy-va)
        endif()
    else()
        # Large frames of the stack are touched page by page, so that none jumps over the guard page.
        target_compile_options(vastrelline_hardening INTERFACE -fstack-clash-protection)
        # All functions of other libraries are looked up at the start, and the table of them is read-only then.
        target_link_options(vastrelline_hardening INTERFACE
            LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:-z,text)
        if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
            # Indirect jumps land on marked places only, and returns go where the calls came from. The system's start
            # files have marks of neither kind: the second holds for them all the same, and is claimed.
            target_compile_options(vastrelline_hardening INTERFACE -fcf-protection=full)
            target_link_options(vastrelline_hardening INTERFACE LINKER:-z,shstk)
        elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
            target_compile_options(vastrelline_hardening INTERFACE -mbranch-protection=standard)
        endif()
    endif()
endif()
