# SPDX-License-Identifier: Apache-2.0
#
# Looks into the libraries of a build with plain forms only: no function is named after a vector form, and no
# instruction takes a register that only AVX has. Those of the baseline the compiler uses by itself.
#
# LIBRARY, OBJECTS  the shared library and the static one, which has names for all that it holds
# NM, OBJDUMP       the tools of the compiler that made them
execute_process(COMMAND ${NM} --defined-only ${OBJECTS} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "FilterFrameScalar")
    message(FATAL_ERROR "${OBJECTS} has no plain form either, so the tool's output was not understood")
endif()
if(symbols MATCHES "[^\n]*(Baseline|Avx2|Avx512)[^\n]*")
    message(FATAL_ERROR "${OBJECTS} holds a vector form:\n${CMAKE_MATCH_0}")
endif()

execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${LIBRARY}
    OUTPUT_VARIABLE instructions COMMAND_ERROR_IS_FATAL ANY)
if(NOT instructions MATCHES "\tret")
    message(FATAL_ERROR "${LIBRARY} has no instructions, so the tool's output was not understood")
endif()
if(instructions MATCHES "[^\n]*%[yz]mm[^\n]*")
    message(FATAL_ERROR "${LIBRARY} needs AVX:\n${CMAKE_MATCH_0}")
endif()
