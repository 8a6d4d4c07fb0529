# SPDX-License-Identifier: Apache-2.0
#
# Installs the library into a fresh folder and builds and runs the C example against that tree, once by
# find_package and, but on Windows, once by pkg-config.
#
# BUILD, CONFIG         a finished build and its configuration
# SOURCE                the tree it was built from
# SCRATCH               a folder of this test's own, emptied first
# C_COMPILER, C_FLAGS, TOOLCHAIN, EMULATOR   as the library was built; EMULATOR runs its programs
# LIBDIR                where libraries lie in the install tree
# IS_WINDOWS            it is a DLL
# HAS_TOOL              the tool was built
# HAS_STATIC            the static library was built
# MANDOC, PYTHON        the programs mandoc and python3, if there are such
set(ENV{DESTDIR} "")
file(REMOVE_RECURSE ${SCRATCH})
set(prefix "${SCRATCH}/a place with blanks")

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${prefix})

# Two levels, 816 and 1584, which the exposure curve leaves as they are. As the lowest and the highest they come
# out as 0 and OUTPUTRANGE: 16705 is 0x4141.
string(ASCII 48 3 48 3 48 3 48 3 48 6 48 6 48 6 48 6 frame)
file(WRITE ${SCRATCH}/frame.raw "${frame}")
file(WRITE ${SCRATCH}/profile.ini
     "[General]\nPROCMODE=2\nBITSTORED=16\nSATURATION_VALUE=65535\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\n"
     "OUTPUTRANGE=16705\nFunctionCount=1\n00_Function_Number=10\n00_POST_GAMMA_RATIO=2\n")
set(enhanced "00000000000000004141414141414141")

function(check_program program)
    file(REMOVE ${SCRATCH}/enhanced.raw)
    run(${EMULATOR} ${program} ${SCRATCH}/frame.raw 4x2 ${SCRATCH}/profile.ini General ${SCRATCH}/enhanced.raw)
    file(READ ${SCRATCH}/enhanced.raw pixels HEX)
    if(NOT pixels STREQUAL enhanced)
        message(FATAL_ERROR "The enhanced frame is ${pixels} in place of ${enhanced}")
    endif()
endfunction()

# The documents: their pages lead to one another, to profiles and to the header.
foreach(file README.md docs/README.md docs/pictures/strip.png examples/CMakeLists.txt bindings/pascal/vastrelline.pas
             LICENSE NOTICE LICENSES/MIT.txt vastrelline.spdx.json)
    if(NOT EXISTS ${prefix}/share/doc/vastrelline/${file})
        message(FATAL_ERROR "The document ${file} was not installed")
    endif()
endforeach()
if(PYTHON AND HAS_TOOL)
    run(${PYTHON} -B ${SOURCE}/tests/package/check_pages.py ${prefix}/share/doc/vastrelline ${prefix})
endif()

# The tool and what it says of itself
if(HAS_TOOL)
    set(toolFiles bin/vastrelline share/man/man1/vastrelline.1 share/bash-completion/completions/vastrelline
        share/zsh/site-functions/_vastrelline share/fish/vendor_completions.d/vastrelline.fish)
    set(program bin/vastrelline)
    set(libraryPattern "/libvastrelline\\.so\\.[0-9.]+\n")
    if(IS_WINDOWS)
        set(toolFiles bin/vastrelline.exe lib/vastrelline/libvastrelline-forms.dll)
        set(program bin/vastrelline.exe)
        set(libraryPattern "/Vastrelline\\.dll\n")
    endif()
    foreach(file IN LISTS toolFiles)
        if(NOT EXISTS ${prefix}/${file})
            message(FATAL_ERROR "${file} was not installed")
        endif()
    endforeach()
    # It finds the library although the tree stands elsewhere.
    file(COPY ${prefix}/ DESTINATION ${SCRATCH}/moved)
    execute_process(COMMAND ${EMULATOR} ${SCRATCH}/moved/${program} --version OUTPUT_VARIABLE version
                    COMMAND_ERROR_IS_FATAL ANY)
    if(NOT version MATCHES "^vastrelline [0-9]")
        message(FATAL_ERROR "The tool's version is '${version}'")
    endif()
    # The self test finds the installation whole, and names what is changed or missing.
    set(selftest ${EMULATOR} ${SCRATCH}/moved/${program} selftest --only-files)
    run(${selftest} --report ${SCRATCH}/selftest.html)
    file(APPEND ${SCRATCH}/moved/share/vastrelline/profiles/dental.ini "; changed")
    file(REMOVE ${SCRATCH}/moved/include/vastrelline.h)
    execute_process(COMMAND ${selftest} OUTPUT_VARIABLE said RESULT_VARIABLE result)
    if(NOT result EQUAL 1 OR NOT said MATCHES "profiles/dental.ini is changed" OR
       NOT said MATCHES "include/vastrelline.h is missing" OR said MATCHES "general.ini")
        message(FATAL_ERROR "The self test of a changed installation ends with ${result}:\n${said}")
    endif()
    # Part by part: the list of the tool holds the library, and nothing of a part that may be missing.
    foreach(component runtime tools)
        run(${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${SCRATCH}/parts --component ${component})
    endforeach()
    if(EXISTS ${SCRATCH}/parts/include OR EXISTS ${SCRATCH}/parts/share/doc)
        message(FATAL_ERROR "Library and tool alone bring headers or documents along")
    endif()
    run(${EMULATOR} ${SCRATCH}/parts/${program} selftest --only-files)
    run(${CMAKE_COMMAND} --install ${BUILD} --config ${CONFIG} --prefix ${SCRATCH}/parts --component development)
    run(${EMULATOR} ${SCRATCH}/parts/${program} selftest --only-files)
    file(READ ${SCRATCH}/parts/share/vastrelline/installed-files.txt list)
    if(NOT list MATCHES "${libraryPattern}" OR list MATCHES "vastrelline\\.h")
        message(FATAL_ERROR "The list of library and tool is\n${list}")
    endif()
    file(REMOVE ${SCRATCH}/moved/share/vastrelline/installed-files.txt)
    execute_process(COMMAND ${selftest} OUTPUT_VARIABLE said RESULT_VARIABLE result)
    if(NOT result EQUAL 1 OR NOT said MATCHES "there is no list of the installed files")
        message(FATAL_ERROR "The self test without its list ends with ${result}:\n${said}")
    endif()
    # The manifest of the installation finds its frames and profiles. Under sanitizers it takes minutes, and the
    # build tree's is verified there, too.
    if(NOT C_FLAGS MATCHES "sanitize")
        run(${EMULATOR} ${prefix}/${program} verify ${prefix}/share/vastrelline/proof/manifest.json)
    endif()
    run(${EMULATOR} ${SCRATCH}/moved/${program} phantom --size 40x50 --out ${SCRATCH}/phantom.png --force)
    if(MANDOC AND NOT IS_WINDOWS)
        execute_process(COMMAND ${MANDOC} -Tlint ${prefix}/share/man/man1/vastrelline.1
                        OUTPUT_VARIABLE faults RESULT_VARIABLE result)
        if(faults OR result)
            message(FATAL_ERROR "The manual page has faults:\n${faults}")
        endif()
    endif()
endif()

# 1. find_package
set(toolchain "")
if(TOOLCHAIN)
    set(toolchain --toolchain ${TOOLCHAIN})
endif()
run(${CMAKE_COMMAND} -S ${SOURCE}/examples -B ${SCRATCH}/by_package -G Ninja ${toolchain}
    -DCMAKE_BUILD_TYPE=${CONFIG} -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_C_FLAGS=${C_FLAGS}
    -Dvastrelline_DIR=${prefix}/${LIBDIR}/cmake/vastrelline)
run(${CMAKE_COMMAND} --build ${SCRATCH}/by_package)
if(IS_WINDOWS)
    foreach(file bin/Vastrelline.dll ${LIBDIR}/Vastrelline.def)
        if(NOT EXISTS ${prefix}/${file})
            message(FATAL_ERROR "${file} was not installed")
        endif()
    endforeach()
    file(COPY ${prefix}/bin/Vastrelline.dll DESTINATION ${SCRATCH}/by_package)
    check_program(${SCRATCH}/by_package/process_frame.exe)
    return()
endif()
check_program(${SCRATCH}/by_package/process_frame)
if(HAS_STATIC)
    set(ENV{LD_LIBRARY_PATH} "")
    run(${CMAKE_COMMAND} -S ${SOURCE}/examples -B ${SCRATCH}/by_static_package -G Ninja ${toolchain}
        -DCMAKE_BUILD_TYPE=${CONFIG} -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_C_FLAGS=${C_FLAGS}
        -Dvastrelline_DIR=${prefix}/${LIBDIR}/cmake/vastrelline -DVASTRELLINE_EXAMPLE_STATIC=ON)
    run(${CMAKE_COMMAND} --build ${SCRATCH}/by_static_package)
    check_program(${SCRATCH}/by_static_package/process_frame)
    file(STRINGS ${SCRATCH}/by_static_package/process_frame loaded REGEX "libvastrelline\\.so")
    if(loaded)
        message(FATAL_ERROR "The host with the static library loads the shared one, too")
    endif()
endif()

# 2. pkg-config
find_program(pkgConfig NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
execute_process(COMMAND ${pkgConfig} --cflags --libs vastrelline
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(C_FLAGS UNIX_COMMAND "${C_FLAGS}")
run(${C_COMPILER} -std=c99 ${C_FLAGS} ${SOURCE}/examples/process_frame.c -o ${SCRATCH}/by_pkg_config ${flags})
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
check_program(${SCRATCH}/by_pkg_config)
if(HAS_STATIC)
    set(ENV{LD_LIBRARY_PATH} "")
    execute_process(COMMAND ${pkgConfig} --static --cflags --libs vastrelline
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    # Both libraries lie in one folder, and a linker that may choose takes the shared one.
    string(REPLACE "-lvastrelline" "-l:libvastrelline.a" flags "${flags}")
    separate_arguments(flags UNIX_COMMAND "${flags}")
    run(${C_COMPILER} -std=c99 ${C_FLAGS} ${SOURCE}/examples/process_frame.c -o ${SCRATCH}/by_static ${flags})
    check_program(${SCRATCH}/by_static)
endif()
