# SPDX-License-Identifier: Apache-2.0
#
# Looks through the instructions of the shared library LIBRARY: each multiplication rounds before its product is
# added to something, so there is no fused one. A compiler that fuses changes bits, and does so by itself on
# processors that always have the instruction, unless it is told not to.
#
# OBJDUMP   the tool of the compiler that made it
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${LIBRARY}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)

# Of doubles on the x86, of doubles on the Arm.
if(NOT text MATCHES "\tv?mulsd " AND NOT text MATCHES "\tfmul\t")
    message(FATAL_ERROR "No multiplication found: is this the disassembly of ${LIBRARY}?")
endif()
# vfmadd213sd and the like; fmadd, fnmsub; fmla, fmls, fcmla of vectors.
string(REGEX MATCHALL "[^\n]*\t(vfn?m(add|sub)|fn?m(add|sub)|fml[as]|fcmla)[^\n]*" fused "${text}")
if(fused)
    list(LENGTH fused count)
    list(GET fused 0 first)
    message(FATAL_ERROR "${LIBRARY} holds ${count} fused operations, such as\n${first}")
endif()
