# SPDX-License-Identifier: Apache-2.0
#
# Lines and functions for debuggers and crash reports, in a file of their own beside the library: users get the library
# without it, and who looks into a crash puts the two together again. A debugger finds it by the link in the library.
option(VASTRELLINE_SPLIT_DEBUG "Write what debuggers need to a file beside the optimised library" ON)
set(VASTRELLINE_HAS_DEBUG_FILE OFF)
if(VASTRELLINE_SPLIT_DEBUG AND CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VASTRELLINE_SANITIZE AND NOT VASTRELLINE_FUZZ
   AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_OBJCOPY)
    set(VASTRELLINE_HAS_DEBUG_FILE ON)
endif()

# Has the objects say where their code comes from. Neither code nor data change.
function(add_debug_lines objects)
    if(VASTRELLINE_HAS_DEBUG_FILE)
        # GCC notes the places of some calls otherwise where these warnings are off, and the library's check sum of the file
        # would be another one for users than for developers.
        target_compile_options(${objects} PRIVATE -g1 -Wall)
    endif()
endfunction()

# Moves that out of the linked library.
function(split_debug_lines library)
    if(NOT VASTRELLINE_HAS_DEBUG_FILE)
        return()
    endif()
    set(file $<TARGET_FILE:${library}>)
    # A DLL keeps its names of functions, which its other tools read; an ELF library has those that count in a table apart.
    set(strip --strip-unneeded)
    if(WIN32)
        set(strip --strip-debug)
    endif()
    # The time in a DLL stays what the linker wrote, none: objcopy would write the hour.
    add_custom_command(TARGET ${library} POST_BUILD VERBATIM
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug ${file} ${file}.debug
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates ${strip} --add-gnu-debuglink=${file}.debug ${file})
    set(folder ${CMAKE_INSTALL_LIBDIR})
    if(WIN32)
        set(folder ${CMAKE_INSTALL_BINDIR})
    endif()
    install(FILES ${file}.debug DESTINATION ${folder} COMPONENT debug EXCLUDE_FROM_ALL)
endfunction()
