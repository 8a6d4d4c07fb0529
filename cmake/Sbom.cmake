# SPDX-License-Identifier: Apache-2.0
#
# A bill of materials, vastrelline.spdx.json, made by each build of the library that ran to its end: what is inside
# library and tool, from whom, in which version and under which licence. docs/licences.md says the same in words.

# The value of macros that a header of the C library defines, as a version.
function(read_macro_version output header)
    execute_process(COMMAND ${CMAKE_C_COMPILER} -E -dM -include ${header} -x c /dev/null
        OUTPUT_VARIABLE macros ERROR_QUIET)
    set(numbers "")
    foreach(macro ${ARGN})
        if(macros MATCHES "#define ${macro} ([0-9]+)")
            list(APPEND numbers ${CMAKE_MATCH_1})
        endif()
    endforeach()
    list(JOIN numbers "." version)
    set(${output} "${version}" PARENT_SCOPE)
endfunction()

set(runtimeLicence "GPL-3.0-or-later WITH GCC-exception-3.1")
if(WIN32)
    set(link STATIC_LINK)
    read_macro_version(mingwVersion _mingw.h
        __MINGW64_VERSION_MAJOR __MINGW64_VERSION_MINOR __MINGW64_VERSION_BUGFIX)
    set(parts "both|mingw-w64|${mingwVersion}|ZPL-2.1|STATIC_LINK"
        "both|winpthreads|${mingwVersion}|MIT AND BSD-3-Clause|STATIC_LINK")
    if(VASTRELLINE_HARDENING)
        # It ends a host whose canary was overwritten; Linux has that in its C library.
        list(APPEND parts "both|libssp|${CMAKE_CXX_COMPILER_VERSION}|${runtimeLicence}|STATIC_LINK")
    endif()
else()
    set(link DYNAMIC_LINK)
    read_macro_version(libcVersion features.h __GLIBC__ __GLIBC_MINOR__)
    set(parts "both|glibc|${libcVersion}|LGPL-2.1-or-later|DYNAMIC_LINK")
endif()
list(APPEND parts "both|libstdc++|${CMAKE_CXX_COMPILER_VERSION}|${runtimeLicence}|${link}"
    "both|libgcc|${CMAKE_CXX_COMPILER_VERSION}|${runtimeLicence}|${link}")
if(TARGET vastrelline_tool)
    get_directory_property(toolCli11 DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION CLI11_VERSION)
    get_directory_property(toolJson DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION nlohmann_json_VERSION)
    get_directory_property(toolPng DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION PNG_VERSION_STRING)
    get_directory_property(toolTiff DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION TIFF_VERSION_STRING)
    list(APPEND parts "tool|CLI11|${toolCli11}|BSD-3-Clause|STATIC_LINK"
        "tool|nlohmann-json|${toolJson}|MIT|STATIC_LINK")
    list(APPEND parts "tool|libpng|${toolPng}|libpng-2.0|${link}" "tool|libtiff|${toolTiff}|libtiff|${link}")
    get_directory_property(hasWorkbench DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION VASTRELLINE_HAS_WORKBENCH)
    if(hasWorkbench)
        get_directory_property(toolBoost DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION Boost_VERSION_STRING)
        list(APPEND parts "tool|Boost|${toolBoost}|BSL-1.0|STATIC_LINK")
    endif()
    if(WIN32)
        get_directory_property(toolZlib DIRECTORY ${PROJECT_SOURCE_DIR}/tools DEFINITION ZLIB_VERSION_STRING)
        list(APPEND parts "tool|zlib|${toolZlib}|Zlib|STATIC_LINK")
    endif()
endif()

# What the workbench's page is made of is known when it is made.
set(pageLicences "")
if(hasWorkbench)
    set(pageLicences ${PROJECT_BINARY_DIR}/workbench/made/licences.txt)
endif()

set(sbom ${PROJECT_BINARY_DIR}/vastrelline.spdx.json)
add_custom_command(OUTPUT ${sbom}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${sbom} -DVERSION=${VASTRELLINE_VERSION} -DSOURCE=${PROJECT_SOURCE_DIR}
            -DCOMMIT_FILE=${PROJECT_BINARY_DIR}/src/build_note/commit.txt -DHAS_TOOL=$<TARGET_EXISTS:vastrelline_tool>
            "-DFILES=$<TARGET_FILE:vastrelline>;${PROJECT_SOURCE_DIR}/include/vastrelline.h" "-DPARTS=${parts}"
            -DPAGE_LICENCES=${pageLicences} -P ${PROJECT_SOURCE_DIR}/cmake/WriteSbom.cmake
    DEPENDS vastrelline $<TARGET_NAME_IF_EXISTS:vastrelline_page> ${PROJECT_SOURCE_DIR}/include/vastrelline.h ${PROJECT_SOURCE_DIR}/cmake/WriteSbom.cmake
            ${pageLicences} VERBATIM)
add_custom_target(vastrelline_sbom ALL DEPENDS ${sbom})
install(FILES ${sbom} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT docs)
