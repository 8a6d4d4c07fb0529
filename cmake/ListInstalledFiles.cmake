# SPDX-License-Identifier: Apache-2.0
#
# Run at the end of an installation: writes a list of all files that were installed, with their SHA-256, for
# `vastrelline selftest`; `sha256sum --check` in the prefix reads it, too. Where the tool is installed as a component,
# the list holds its files and the library that lies there already, for the other components may come and go.
#
# dataFolder     below the prefix
# libraryFiles   a pattern of the library's, below the prefix
set(list "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${dataFolder}/installed-files.txt")
set(files ${CMAKE_INSTALL_MANIFEST_FILES})
if(CMAKE_INSTALL_COMPONENT)
    file(GLOB libraries "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${libraryFiles}")
    foreach(library IN LISTS libraries)
        file(RELATIVE_PATH name "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}" "${library}")
        list(PREPEND files "${CMAKE_INSTALL_PREFIX}/${name}")
    endforeach()
endif()
set(lines "")
foreach(file IN LISTS files)
    file(SHA256 "$ENV{DESTDIR}${file}" hash)
    file(RELATIVE_PATH name "${CMAKE_INSTALL_PREFIX}" "${file}")
    string(APPEND lines "${hash}  ${name}\n")
endforeach()
file(WRITE "${list}" "${lines}")
message(STATUS "Listed: ${list}")
