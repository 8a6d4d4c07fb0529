# SPDX-License-Identifier: Apache-2.0
#
# The workbench's page as a part of the tool: TypeScript that Node's packages make into a few files, and Boost's headers
# for the server. VASTRELLINE_WORKBENCH says whether that is wanted; AUTO takes what is there.
#
# Sets VASTRELLINE_HAS_WORKBENCH, and VASTRELLINE_PAGE_SOURCE, a C++ file with the page in it.
set(VASTRELLINE_WORKBENCH AUTO CACHE STRING "Build the tool with its workbench: ON, OFF or AUTO")
set_property(CACHE VASTRELLINE_WORKBENCH PROPERTY STRINGS AUTO ON OFF)
set(VASTRELLINE_HAS_WORKBENCH OFF)
if(NOT VASTRELLINE_WORKBENCH)
    return()
endif()

set(missingOfWorkbench "")
find_package(Boost 1.74 QUIET)
if(NOT Boost_FOUND)
    string(APPEND missingOfWorkbench " Boost")
endif()
find_program(VASTRELLINE_NODE node)
if(NOT VASTRELLINE_NODE)
    string(APPEND missingOfWorkbench " Node.js")
endif()
# A build fetches nothing by itself.
set(pageModules ${PROJECT_SOURCE_DIR}/build/page/node_modules)
if(NOT EXISTS ${pageModules}/esbuild OR NOT EXISTS ${pageModules}/preact)
    string(APPEND missingOfWorkbench " node-modules")
endif()
if(missingOfWorkbench)
    set(said "The tool's workbench needs what is not there:${missingOfWorkbench}. scripts/install-dependencies.sh workbench installs it")
    if(WIN32)
        string(APPEND said ", and scripts/build-windows-libraries.sh lays Boost's headers where this compiler finds them")
    endif()
    if(NOT VASTRELLINE_WORKBENCH STREQUAL AUTO)
        message(FATAL_ERROR "${said}, or leave it out by -DVASTRELLINE_WORKBENCH=OFF")
    endif()
    message(STATUS "${said}; the tool is built without it")
    return()
endif()
set(VASTRELLINE_HAS_WORKBENCH ON)

# esbuild looks for packages beside the sources: both are brought together in the build tree, and the source tree stays
# as it is.
set(pageSource ${PROJECT_SOURCE_DIR}/workbench)
set(pageBuild ${PROJECT_BINARY_DIR}/workbench)
set(pageParts index.html app.css app.js)
file(GLOB_RECURSE pageFiles CONFIGURE_DEPENDS ${pageSource}/src/*)
file(MAKE_DIRECTORY ${pageBuild})
file(CREATE_LINK ${pageModules} ${pageBuild}/node_modules SYMBOLIC)
set(pageMade "")
foreach(part IN LISTS pageParts)
    list(APPEND pageMade ${pageBuild}/made/${part})
endforeach()
add_custom_command(OUTPUT ${pageMade} ${pageBuild}/made/licences.txt
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${pageBuild}/src
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${pageSource}/src ${pageBuild}/src
    COMMAND ${CMAKE_COMMAND} -E copy ${pageSource}/package.json ${pageSource}/build.mjs ${pageBuild}
    COMMAND ${CMAKE_COMMAND} -E chdir ${pageBuild} ${VASTRELLINE_NODE} build.mjs made
    DEPENDS ${pageSource}/package-lock.json ${pageSource}/build.mjs ${pageFiles}
    COMMENT "Building the workbench's page" VERBATIM)
# The bill of materials, made in another folder, needs what these files tell.
add_custom_target(vastrelline_page DEPENDS ${pageMade} ${pageBuild}/made/licences.txt)
set(VASTRELLINE_PAGE_SOURCE ${PROJECT_BINARY_DIR}/workbench/PageParts.cpp)
add_custom_command(OUTPUT ${VASTRELLINE_PAGE_SOURCE}
    COMMAND ${CMAKE_COMMAND} "-DPARTS=${pageParts}" -DFOLDER=${pageBuild}/made -DOUTPUT=${VASTRELLINE_PAGE_SOURCE}
            -P ${PROJECT_SOURCE_DIR}/cmake/EmbedPage.cmake
    DEPENDS ${pageMade} ${PROJECT_SOURCE_DIR}/cmake/EmbedPage.cmake VERBATIM)
