# Converts one bundled example and compares the document with the one kept beside it.
# Variables: TARNWICK, ARGS (list), OUTPUT, EXPECTED.
execute_process(COMMAND ${TARNWICK} ${ARGS} -o ${OUTPUT}
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE diagnostics)
if(NOT status EQUAL 0 OR NOT diagnostics STREQUAL "")
  message(FATAL_ERROR "conversion failed with status ${status}:\n${diagnostics}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${EXPECTED} RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "${OUTPUT} differs from ${EXPECTED}; review the change and copy it over if it is right")
endif()
