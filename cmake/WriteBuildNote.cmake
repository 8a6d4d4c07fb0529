# SPDX-License-Identifier: Apache-2.0
#
# Run by each build: writes what the library says of itself to FOLDER, and touches no file that says so already.
#
# SOURCE, FOLDER, TEMPLATES   of the tree, of the files, of their templates
# KNOWN_COMMIT                the commit where there is no repository to ask; may be empty
# VERSION, COMPILER, BUILD, FLAGS, FORMS, IS_WINDOWS   as the configuration knows them
cmake_minimum_required(VERSION 3.25)

set(COMMIT "${KNOWN_COMMIT}")
find_program(git git)
if(NOT COMMIT AND git AND EXISTS ${SOURCE}/.git)
    execute_process(COMMAND ${git} rev-parse HEAD WORKING_DIRECTORY ${SOURCE}
        OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    execute_process(COMMAND ${git} status --porcelain --untracked-files=no WORKING_DIRECTORY ${SOURCE}
        OUTPUT_VARIABLE changes ERROR_QUIET)
    if(COMMIT AND changes)
        string(APPEND COMMIT "-changed")
    endif()
endif()
if(NOT COMMIT)
    set(COMMIT unknown)
endif()

set(noteLiteral "")
foreach(name VERSION COMMIT COMPILER BUILD FLAGS FORMS)
    # Both files quote their texts as C does.
    string(REPLACE "\\" "\\\\" ${name} "${${name}}")
    string(REPLACE "\"" "\\\"" ${name} "${${name}}")
    string(TOLOWER ${name} key)
    string(APPEND noteLiteral "    \"${key}=${${name}}\\n\"\n")
endforeach()
string(REGEX REPLACE "\n$" "" noteLiteral "${noteLiteral}")
string(REGEX MATCH "^[0-9.]+" numbers "${VERSION}")
string(REPLACE "." "," VERSION_COMMAS "${numbers}.0")
set(FILE_FLAGS 0)
if(NOT numbers STREQUAL VERSION)
    set(FILE_FLAGS VS_FF_PRERELEASE)
endif()

file(CONFIGURE OUTPUT ${FOLDER}/commit.txt CONTENT "${COMMIT}")
if(IS_WINDOWS)
    configure_file(${TEMPLATES}/VersionResource.rc.in ${FOLDER}/VersionResource.rc @ONLY)
else()
    configure_file(${TEMPLATES}/BuildNote.cpp.in ${FOLDER}/BuildNote.cpp @ONLY)
endif()
