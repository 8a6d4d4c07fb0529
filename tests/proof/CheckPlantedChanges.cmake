# SPDX-License-Identifier: Apache-2.0
#
# Makes a manifest with the tool's own library, then verifies PLANTED against it: without a change, and with one
# pixel changed in a stage in the middle of the configured chain, in one of the fixed chain, and in the result.
file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
set(manifest ${SCRATCH}/manifest.json)

function(run expectedCode)
    execute_process(COMMAND ${TOOL} verify ${manifest} ${ARGN} RESULT_VARIABLE code OUTPUT_VARIABLE said
                    ERROR_VARIABLE said)
    if(NOT code STREQUAL expectedCode)
        message(FATAL_ERROR "verify ${ARGN} ended with ${code}, not ${expectedCode}:\n${said}")
    endif()
    set(said "${said}" PARENT_SCOPE)
endfunction()

run(0 --add --frame phantom:260x334 --profile ${SOURCE}/profiles/dental.ini --section Endodontic)
run(0 --add --frame phantom:260x334 --profile ${SOURCE}/profiles/fixed.ini --section General)

set(ENV{VASTRELLINE_PLANT} "")
run(0 --library ${PLANTED})

function(expect_found place words)
    set(ENV{VASTRELLINE_PLANT} ${place})
    run(1 --library ${PLANTED})
    string(FIND "${said}" "${words}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "a pixel changed in '${place}' is not told as\n${words}\nbut as\n${said}")
    endif()
endfunction()

expect_found(gaussian "Endodontic, ImageProcessing\n    differs first at stage 2 (Gaussian, position 01);")
expect_found(clahe "General, ImageProcessing\n    differs first at stage 4 (CLAHE);")
expect_found(result "Endodontic, ImageProcessing\n    differs first at the result; 1 of 9 points differ")
expect_found(result "General, ImageProcessing\n    differs first at the result; 1 of 9 points differ")
