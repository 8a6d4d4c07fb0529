# SPDX-License-Identifier: Apache-2.0
#
# Runs PROGRAM with the words of ARGUMENTS and keeps what it prints as OUTPUT, but only if it ends well.
separate_arguments(ARGUMENTS)
execute_process(COMMAND ${PROGRAM} ${ARGUMENTS} OUTPUT_FILE ${OUTPUT}.new COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${OUTPUT}.new ${OUTPUT})
