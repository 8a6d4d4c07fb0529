# SPDX-License-Identifier: Apache-2.0
#
# Looks into the shared library LIBRARY: each function of the C library that it calls is one that the fault
# injectors stand before, or one that does not fail. So no new call escapes the sweep.
#
# INJECTORS   the folder of AllocatorFaults.cpp and FaultInjector.cpp
# NM          the tool of the compiler that made it
cmake_minimum_required(VERSION 3.25)
set(harmless
    __cxa_atexit __cxa_finalize __errno_location __libc_single_threaded stderr
    # Descriptors and locks of this process, which only a mistake of ours could make fail.
    close pthread_mutex_lock pthread_mutex_unlock pthread_setcancelstate
    # Large blocks that go back, and a hint where they lie.
    madvise munmap
    # A text to a person, whose loss has no effect.
    fwrite
    # Who and when.
    clock_gettime geteuid getpid gettid localtime_r nanosleep time
    # Signals of this thread.
    pthread_sigmask sigaddset sigemptyset sigismember sigpending sigtimedwait
    # Ends a process whose stack is spoilt.
    __stack_chk_fail
    # What the processor can do, which the compiler's runtime asks on 64-bit Arm.
    __getauxval
    # Arithmetic and memory.
    sqrt
    memchr memcmp memcpy memmove memset strcmp strlen wcslen wmemchr wmemcmp wmemcpy wmemmove wmemset __wmemcpy_chk)

execute_process(COMMAND ${NM} -D --undefined-only --format=just-symbols ${LIBRARY}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+@GLIBC_" names "${text}")
if(NOT names)
    message(FATAL_ERROR "${LIBRARY} calls nothing, so the tool's output was not understood")
endif()
file(READ ${INJECTORS}/AllocatorFaults.cpp allocator)
file(READ ${INJECTORS}/FaultInjector.cpp injector)
foreach(name IN LISTS names)
    string(REGEX REPLACE "@.*" "" name "${name}")
    if(NOT name IN_LIST harmless AND NOT "${allocator}${injector}" MATCHES "[ *]${name}[(,]")
        message(SEND_ERROR "The sweep of faults does not know ${name}: stand before it in the injector")
    endif()
endforeach()
