# SPDX-License-Identifier: Apache-2.0
#
# Looks into the static library LIBRARY: what a linker finds in it is the eight functions and nothing else, so that no
# name inside can meet one of the host's.
#
# NM   the tool of the compiler that made it
execute_process(COMMAND ${NM} --defined-only --extern-only --format=just-symbols ${LIBRARY}
    OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" names "${text}")
list(FILTER names EXCLUDE REGEX ":$")  # the archive's one member
list(SORT names)
set(expected
    Getdose_ImageInfo ImageProcessing ImageProcessingCR ImageProcessingS ImageProcessing_N ImageProcessing_NE
    ImageProcessing_NS RotateImage)
list(SORT expected)
if(NOT names STREQUAL expected)
    message(FATAL_ERROR "${LIBRARY} shows\n  ${names}\nin place of\n  ${expected}")
endif()
