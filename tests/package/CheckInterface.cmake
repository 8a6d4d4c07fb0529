# SPDX-License-Identifier: Apache-2.0
#
# Compares the binary interface of LIBRARY, its functions with their types, with that of BASELINE: hosts that were built
# then must run now. scripts/write-interface.sh writes the baseline.
#
# DEBUG_FOLDER    holds what debuggers read
# ABIDIFF         the program
# SCRATCH         a folder of this test's own
function(compare baseline result)
    execute_process(COMMAND ${ABIDIFF} --debug-info-dir2 ${DEBUG_FOLDER} ${baseline} ${LIBRARY}
        OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE code)
    set(${result} ${code} PARENT_SCOPE)
    set(said "${said}" PARENT_SCOPE)
endfunction()

compare(${BASELINE} code)
if(NOT code EQUAL 0)
    message(FATAL_ERROR "The interface has changed. Hosts that were built before it would break, or miss what is new; "
        "where it should, write the baseline by scripts/write-interface.sh, and for what is gone or of another shape "
        "give the library another soname.\n${said}")
endif()

# Were types not read, all would seem equal: a record whose last number lies elsewhere, a shorter number as an argument,
# and a function that was there must be noticed.
file(READ ${BASELINE} text)
foreach(change "layout-offset-in-bits='288'|layout-offset-in-bits='256'"
               "name='unsigned short int' size-in-bits='16'|name='unsigned short int' size-in-bits='32'"
               "<elf-symbol name='RotateImage'|<elf-symbol name='MirrorImage'")
    string(REPLACE "|" ";" change "${change}")
    list(GET change 0 old)
    list(GET change 1 new)
    string(REPLACE "${old}" "${new}" other "${text}")
    if(other STREQUAL text)
        message(FATAL_ERROR "${BASELINE} has no ${old}")
    endif()
    file(WRITE ${SCRATCH}/other.abi "${other}")
    compare(${SCRATCH}/other.abi code)
    if(code EQUAL 0)
        message(FATAL_ERROR "A baseline with ${new} in place of ${old} passes for the same interface")
    endif()
endforeach()
