# SPDX-License-Identifier: Apache-2.0
#
# The digest's program finds the one group whose expected hash was changed, and only that.
file(READ ${EXPECTED} text)
string(REGEX REPLACE "(RotateImage +)[0-9a-f]" "\\1x" changed "${text}")
if(changed STREQUAL text)
    message(FATAL_ERROR "${EXPECTED} has no line of RotateImage")
endif()
file(WRITE ${SCRATCH}/changed.txt "${changed}")

execute_process(COMMAND ${PROGRAM} --only RotateImage --only Getdose_ImageInfo --check ${EXPECTED}
    RESULT_VARIABLE code OUTPUT_QUIET ERROR_VARIABLE findings)
if(NOT code EQUAL 0 OR NOT findings STREQUAL "")
    message(FATAL_ERROR "exit code ${code} for what is as expected: ${findings}")
endif()
execute_process(COMMAND ${PROGRAM} --only RotateImage --only Getdose_ImageInfo --check ${SCRATCH}/changed.txt
    RESULT_VARIABLE code OUTPUT_QUIET ERROR_VARIABLE findings)
if(NOT code EQUAL 1 OR NOT findings STREQUAL "RotateImage differs\n")
    message(FATAL_ERROR "exit code ${code} for a changed hash: ${findings}")
endif()
