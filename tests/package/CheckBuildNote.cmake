# SPDX-License-Identifier: Apache-2.0
#
# Asks the TOOL, which EMULATOR runs, what the built LIBRARY says of itself, and the tool of what it calls.
#
# VERSION, BUILD   as the configuration knows them
# COMMIT_FILE      holds the commit that was built
cmake_minimum_required(VERSION 3.25)
file(READ ${COMMIT_FILE} commit)
execute_process(COMMAND ${EMULATOR} ${TOOL} --version --library ${LIBRARY} OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
foreach(line "version   ${VERSION}" "commit    ${commit}" "build     ${BUILD}")
    string(FIND "${said}" "  ${line}\n" place)
    if(place EQUAL -1)
        message(SEND_ERROR "\"${line}\" is not in what ${LIBRARY} says:\n${said}")
    endif()
endforeach()
execute_process(COMMAND ${EMULATOR} ${TOOL} version OUTPUT_VARIABLE own COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n[^\n ][^\n]*\n  version" "\n  version" own "${own}")
string(REGEX REPLACE "\n[^\n ][^\n]*\n  version" "\n  version" said "${said}")
if(NOT own STREQUAL said)
    message(SEND_ERROR "The tool calls another library:\n${own}")
endif()
