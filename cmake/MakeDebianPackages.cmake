# SPDX-License-Identifier: Apache-2.0
#
# Run by cpack when all parts lie in their folders.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    # The same bytes from the same commit.
    execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CPACK_VASTRELLINE_SOURCE}
        OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(ENV{SOURCE_DATE_EPOCH} ${epoch})
endif()
set(output ${CPACK_TOPLEVEL_DIRECTORY}/debs)
file(REMOVE_RECURSE ${output})
execute_process(COMMAND ${CPACK_VASTRELLINE_SOURCE}/packaging/debian/make-debs.sh
        ${CPACK_TEMPORARY_DIRECTORY} ${CPACK_TOPLEVEL_DIRECTORY}/debian ${output} ${CPACK_PACKAGE_VERSION}
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB CPACK_EXTERNAL_BUILT_PACKAGES ${output}/*.deb)
