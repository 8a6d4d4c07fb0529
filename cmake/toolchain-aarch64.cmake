# SPDX-License-Identifier: Apache-2.0
#
# Cross-builds for 64-bit Arm under Linux with Debian's compiler; programs run under qemu-user where it is installed.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_OBJCOPY aarch64-linux-gnu-objcopy)
set(CMAKE_OBJDUMP aarch64-linux-gnu-objdump)
set(CMAKE_READELF aarch64-linux-gnu-readelf)

# The folder of the other processor's C library: nothing that the compiling machine has is linked by mistake.
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(VASTRELLINE_QEMU NAMES qemu-aarch64 qemu-aarch64-static NO_CMAKE_FIND_ROOT_PATH)
if(VASTRELLINE_QEMU)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${VASTRELLINE_QEMU};-L;/usr/aarch64-linux-gnu")
endif()
