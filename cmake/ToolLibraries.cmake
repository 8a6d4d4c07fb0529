# SPDX-License-Identifier: Apache-2.0
#
# The libraries that the tool stands on, for a folder that includes this file. On Windows they are parts of the program:
# scripts/build-windows-libraries.sh makes them.
set(toolLibrariesHint "scripts/install-dependencies.sh build")
if(WIN32)
    set(toolLibrariesHint "scripts/build-windows-libraries.sh")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        string(APPEND toolLibrariesHint " 32")
    endif()
endif()
set(missingToolLibraries "")
if(WIN32)
    set(ZLIB_USE_STATIC_LIBS ON)  # before libpng is looked for, which looks for it, too
endif()
foreach(library CLI11 PNG TIFF nlohmann_json)
    find_package(${library} QUIET)
    if(NOT ${library}_FOUND)
        string(APPEND missingToolLibraries " ${library}")
    endif()
endforeach()
if(missingToolLibraries)
    message(FATAL_ERROR "The tool needs what is not there:${missingToolLibraries}. ${toolLibrariesHint} installs it; "
            "-DVASTRELLINE_TOOLS=OFF leaves the tool out")
endif()
if(TIFF_VERSION_STRING AND TIFF_VERSION_STRING VERSION_LESS 4.5)
    message(FATAL_ERROR "The tool needs libtiff 4.5, the first whose errors go to the caller alone")
endif()
if(WIN32)
    # The TIFF library does not say what it needs itself.
    find_package(ZLIB REQUIRED)
    set_property(TARGET TIFF::TIFF APPEND PROPERTY INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
endif()
