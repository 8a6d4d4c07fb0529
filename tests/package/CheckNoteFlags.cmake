# SPDX-License-Identifier: Apache-2.0
#
# What the build note says of a builder's flags, by the function in MODULE.
cmake_minimum_required(VERSION 3.25)
include(${MODULE})

function(expect flags expected)
    keep_flags_of_code(kept "${flags}")
    if(NOT kept STREQUAL expected)
        message(SEND_ERROR "\"${flags}\" became \"${kept}\", not \"${expected}\"")
    endif()
endfunction()

expect("" "")
expect("-O3 -DNDEBUG" "-O3 -DNDEBUG")
expect("  -march=x86-64-v2   -O2 " "-march=x86-64-v2 -O2")
expect("/O2 /fp:precise" "/O2 /fp:precise")
foreach(place "-ffile-prefix-map=/home/a=." "-ffile-prefix-map=.=x" "-fdebug-prefix-map=/home/a=/src" "-fmacro-prefix-map=b=c"
        "-I/home/a" "-I /home/a" "-I include" "-isystem /home/a" "-isystem/home/a" "-include /home/a.h" "-L/home/a" "-B/home/a/bin"
        "--sysroot=/home/a" "--sysroot /home/a" "-fprofile-use=/home/a/x.gcda" "-DROOT=\\\"/home/a\\\"" "-DHOME=C:\\\\Users\\\\a"
        "-Wl,-rpath,/home/a" "@/home/a/flags" "'-I/home/a b'" "-I '/home/a b'")
    expect("-O2 ${place} -g1" "-O2 -g1")
    expect("${place}" "")
endforeach()
