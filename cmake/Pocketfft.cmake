# SPDX-License-Identifier: Apache-2.0
#
# pocketfft, one header of Fourier transforms, for tests and benchmarks only: the library does without. The
# header is the same for every platform; a copy of its own keeps the folder that it lies in, which may be that
# of all the system's headers, out of the way of a cross compiler.
find_path(VASTRELLINE_POCKETFFT_DIR pocketfft_hdronly.h
    PATHS /usr/include /usr/local/include
    PATH_SUFFIXES gemmi/third_party pocketfft NO_CMAKE_FIND_ROOT_PATH
    DOC "Folder of pocketfft_hdronly.h")
if(NOT VASTRELLINE_POCKETFFT_DIR)
    message(FATAL_ERROR "Tests and benchmarks need pocketfft_hdronly.h: install the Debian package gemmi-dev "
        "or libpocketfft-dev, or set VASTRELLINE_POCKETFFT_DIR to its folder")
endif()
configure_file(${VASTRELLINE_POCKETFFT_DIR}/pocketfft_hdronly.h
    ${CMAKE_BINARY_DIR}/pocketfft/pocketfft_hdronly.h COPYONLY)
add_library(vastrelline_pocketfft INTERFACE)
target_include_directories(vastrelline_pocketfft SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/pocketfft)
if(VASTRELLINE_SANITIZE)
    # For its vectors it asks for aligned memory in sizes that the address sanitizer refuses.
    target_compile_definitions(vastrelline_pocketfft INTERFACE POCKETFFT_NO_VECTORS)
endif()
