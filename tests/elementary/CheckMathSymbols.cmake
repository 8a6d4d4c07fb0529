# SPDX-License-Identifier: Apache-2.0
#
# Looks into compiled code: of the C library's mathematics it calls only what is exact, and so the same everywhere.
# All else comes from the elementary functions of this library, which round to the nearest on every machine.
#
# ARCHIVE        a static library, all of whose objects are read
# LIBRARY        a shared library whose own list is read as well; may be empty
# MATH_LIBRARY   the C library's mathematics, whose names are all taken as suspect; may be empty
# NM             the tool of the compiler that made them
cmake_minimum_required(VERSION 3.25)

# The bits follow from the arguments alone: the nearest root, whole numbers beside a number, its parts and its sign.
set(exact ceil copysign fabs floor sqrt)
# What <math.h> and its extensions have beside them; with f or l behind it, they are of floats or long doubles. Some
# round as the machine is told to, and fma rounds once what is rounded twice without it.
set(inexact acos acosh acospi asin asinh asinpi atan atan2 atan2pi atanh atanpi cbrt clog10 compoundn cos cosh cospi drem
    dadd ddiv dfma dmul dsqrt dsub erf erfc exp exp10 exp10m1 exp2 exp2m1 expm1 fadd fdiv fdim ffma fma fmul fsqrt fsub
    gamma hypot j0 j1 jn lgamma lgamma_r llrint log log10 log10p1 log1p log2 log2p1 logp1 lrint nearbyint pow pow10 pown
    powr remainder remquo rint rootn rsqrt scalb significand sin sincos sinh sinpi tan tanh tanpi tgamma y0 y1 yn
    cabs cacos cacosh carg casin casinh catan catanh ccos ccosh cexp clog cpow csin csinh csqrt ctan ctanh)

function(read_names result)
    execute_process(COMMAND ${NM} ${ARGN} OUTPUT_VARIABLE text ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^ \n]+\n" lines "${text}")
    set(names "")
    foreach(line IN LISTS lines)
        # A version; what stands before a name on Windows, or before one of the C library's own.
        string(REGEX REPLACE "(@.*)?\n$" "" name "${line}")
        string(REGEX REPLACE "^__imp_" "" name "${name}")
        string(REGEX REPLACE "^_+" "" name "${name}")
        string(REGEX REPLACE "_finite$" "" name "${name}")
        list(APPEND names "${name}")
    endforeach()
    list(REMOVE_DUPLICATES names)
    set(${result} "${names}" PARENT_SCOPE)
endfunction()

read_names(called --undefined-only --format=just-symbols ${ARCHIVE})
if(NOT "memcpy" IN_LIST called AND NOT "memmove" IN_LIST called)
    message(FATAL_ERROR "${ARCHIVE} calls nothing, so the tool's output was not understood")
endif()
if(LIBRARY)
    read_names(ofLibrary -D --undefined-only --format=just-symbols ${LIBRARY})
    list(APPEND called ${ofLibrary})
endif()
set(suspects "")
if(MATH_LIBRARY)
    read_names(suspects -D --defined-only --format=just-symbols ${MATH_LIBRARY})
    if(NOT "exp" IN_LIST suspects)
        message(FATAL_ERROR "${MATH_LIBRARY} has no exp, so the tool's output was not understood")
    endif()
endif()

foreach(name IN LISTS called)
    string(REGEX REPLACE "[fl]$" "" plain "${name}")
    if(name IN_LIST exact OR plain IN_LIST exact)
        continue()
    endif()
    if(name IN_LIST inexact OR plain IN_LIST inexact OR name IN_LIST suspects OR name MATCHES "^ZGV")
        message(SEND_ERROR "The code calls ${name}, which differs between machines: use src/elementary")
    endif()
endforeach()
