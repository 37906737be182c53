# SPDX-License-Identifier: Apache-2.0
# Converts one bundled example, compares the document with the one kept beside it and
# validates it against the output schema.
# Variables: TARNWICK, XMLLINT, SCHEMA, ARGS (list), OUTPUT, EXPECTED.
execute_process(COMMAND ${TARNWICK} ${ARGS} -o ${OUTPUT}
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE diagnostics)
if(NOT status EQUAL 0 OR NOT diagnostics STREQUAL "")
  message(FATAL_ERROR "conversion failed with status ${status}:\n${diagnostics}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${EXPECTED} RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "${OUTPUT} differs from ${EXPECTED}; review the change and copy it over if it is right")
endif()
execute_process(COMMAND ${XMLLINT} --noout --nonet --schema ${SCHEMA} ${OUTPUT}
                RESULT_VARIABLE status ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the schema rejects ${OUTPUT}:\n${errors}")
endif()
