# SPDX-License-Identifier: Apache-2.0
#
# Version, commit and way of building inside the library's file. Its functions stay eight: a note of the ELF file and a
# resource of the DLL are read without loading them.
set(VASTRELLINE_COMMIT "" CACHE STRING "Commit of this tree where there is no repository to ask")

include(${CMAKE_CURRENT_LIST_DIR}/NoteFlags.cmake)
string(TOUPPER "${CMAKE_BUILD_TYPE}" config)
keep_flags_of_code(noteFlags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${config}}")
string(APPEND noteFlags " -ffp-contract=off")
if(VASTRELLINE_HARDENING)
    string(APPEND noteFlags ", hardened")
endif()
if(VASTRELLINE_SANITIZE)
    string(APPEND noteFlags ", sanitizers ${VASTRELLINE_SANITIZE}")
endif()
set(noteForms "plain")
if(NOT VASTRELLINE_SCALAR_ONLY AND CMAKE_SYSTEM_PROCESSOR MATCHES "^(i[3-6]86|x86|x86_64|AMD64)$")
    set(noteForms "plain, baseline, AVX2, AVX-512")
endif()

# Adds the note to a library.
function(add_build_note library)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/build_note)
    set(note ${folder}/BuildNote.cpp)
    if(WIN32)
        set(note ${folder}/VersionResource.rc)
    endif()
    # Asked anew by every build: a commit changes no file that another rule looks at.
    add_custom_target(${library}_build_note BYPRODUCTS ${note} ${folder}/commit.txt
        COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -DFOLDER=${folder}
                -DTEMPLATES=${PROJECT_SOURCE_DIR}/cmake "-DKNOWN_COMMIT=${VASTRELLINE_COMMIT}"
                "-DVERSION=${VASTRELLINE_VERSION}" "-DBUILD=${CMAKE_BUILD_TYPE}"
                "-DCOMPILER=${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}, ${CMAKE_SYSTEM_PROCESSOR}"
                "-DFLAGS=${noteFlags}" "-DFORMS=${noteForms}" -DIS_WINDOWS=${WIN32}
                -P ${PROJECT_SOURCE_DIR}/cmake/WriteBuildNote.cmake
        VERBATIM)
    target_sources(${library} PRIVATE ${note})
    add_dependencies(${library} ${library}_build_note)
endfunction()
