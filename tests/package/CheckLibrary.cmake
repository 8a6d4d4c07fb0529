# SPDX-License-Identifier: Apache-2.0
#
# Looks into the shared library LIBRARY: its exports are the eight functions and nothing else; on Windows it
# needs DLLs of the system only, elsewhere its name for the loader is the one that hosts are linked with.
#
# NM, OBJDUMP  the tools of the compiler that made it
# IS_WINDOWS   it is a DLL
set(expected
    Getdose_ImageInfo ImageProcessing ImageProcessingCR ImageProcessingS ImageProcessing_N ImageProcessing_NE
    ImageProcessing_NS RotateImage)

function(run result)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

run(header ${OBJDUMP} -p ${LIBRARY})
if(IS_WINDOWS)
    # A table of lines as "	[   0] Getdose_ImageInfo"; newer tools put more between bracket and name.
    if(NOT header MATCHES "\\[Ordinal/Name Pointer\\] Table[^\n]*\n((\t\\[[^\n]*\n)+)")
        message(FATAL_ERROR "${LIBRARY} has no table of exports")
    endif()
    string(REGEX MATCHALL "[A-Za-z_][A-Za-z_0-9@]*\n" names "${CMAKE_MATCH_1}")
    list(TRANSFORM names STRIP)

    string(REGEX MATCHALL "DLL Name: [^\n]+" dlls "${header}")
    if(NOT dlls)
        message(FATAL_ERROR "${LIBRARY} names no DLL at all, so the tool's output was not understood")
    endif()
    foreach(dll IN LISTS dlls)
        string(REPLACE "DLL Name: " "" dll "${dll}")
        string(TOLOWER "${dll}" dll)
        if(NOT dll MATCHES "^(kernel32|user32|advapi32|msvcrt)\\.dll$")
            message(FATAL_ERROR "${LIBRARY} needs ${dll}, which is no part of the system")
        endif()
    endforeach()
else()
    run(symbols ${NM} -D --defined-only --format=just-symbols ${LIBRARY})
    string(REGEX MATCHALL "[^\n]+" names "${symbols}")
    if(NOT header MATCHES "SONAME +libvastrelline\\.so\\.1\n")
        message(FATAL_ERROR "${LIBRARY} has another soname than libvastrelline.so.1")
    endif()
endif()

list(SORT names)
list(SORT expected)
if(NOT names STREQUAL expected)
    message(FATAL_ERROR "${LIBRARY} exports\n  ${names}\nin place of\n  ${expected}")
endif()
message(STATUS "exports: ${names}")
