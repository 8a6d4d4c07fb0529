# SPDX-License-Identifier: Apache-2.0
#
# Cross-builds for 64-bit Windows with mingw-w64; programs run under Wine where it is installed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_OBJCOPY x86_64-w64-mingw32-objcopy)
set(CMAKE_OBJDUMP x86_64-w64-mingw32-objdump)
set(CMAKE_READELF x86_64-w64-mingw32-readelf)

# What scripts/build-windows-libraries.sh has built, and the compiler's own.
set(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/../build/windows-libraries/x64 /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Nothing but the system's own DLLs at run time: the compiler's runtime is linked in.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Debian keeps wine64 out of PATH.
find_program(VASTRELLINE_WINE NAMES wine64 PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(VASTRELLINE_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${VASTRELLINE_WINE}")
endif()
