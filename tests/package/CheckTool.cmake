# SPDX-License-Identifier: Apache-2.0
#
# Looks into the tool TOOL for Windows: beside DLLs of the system it needs the library's alone, and it has its manifest.
#
# OBJDUMP  of the compiler that made it
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${OBJDUMP} -p ${TOOL} OUTPUT_VARIABLE header COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" dlls "${header}")
string(TOLOWER "${dlls}" dlls)
list(TRANSFORM dlls REPLACE "dll name: " "")
if(NOT "vastrelline.dll" IN_LIST dlls)
    message(FATAL_ERROR "${TOOL} does not need the library, so the output was not understood: ${dlls}")
endif()
foreach(dll IN LISTS dlls)
    # The last three are for the workbench: the browser and the sockets. Every Windows from 8 on has all of them.
    if(NOT dll MATCHES "^(kernel32|user32|advapi32|shell32|msvcrt|vastrelline|ole32|ws2_32|mswsock)\\.dll$")
        message(FATAL_ERROR "${TOOL} needs ${dll}, which is no part of the system and not in the archive")
    endif()
endforeach()
file(STRINGS ${TOOL} manifest REGEX "longPathAware>true<" LIMIT_COUNT 1)
if(NOT manifest)
    message(FATAL_ERROR "${TOOL} has no manifest")
endif()
message(STATUS "needs: ${dlls}")
