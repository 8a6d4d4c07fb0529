# SPDX-License-Identifier: Apache-2.0
#
# Run at the end of an installation: writes a list of all files that were installed, with their SHA-256, for
# `vastrelline selftest`; `sha256sum --check` in the prefix reads it, too.
#
# dataFolder   below the prefix
set(list "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${dataFolder}/installed-files.txt")
set(lines "")
foreach(file IN LISTS CMAKE_INSTALL_MANIFEST_FILES)
    file(SHA256 "$ENV{DESTDIR}${file}" hash)
    file(RELATIVE_PATH name "${CMAKE_INSTALL_PREFIX}" "${file}")
    string(APPEND lines "${hash}  ${name}\n")
endforeach()
file(WRITE "${list}" "${lines}")
message(STATUS "Listed: ${list}")
