# SPDX-License-Identifier: Apache-2.0
# Every document in the directory INVALID is well-formed but breaks the output schema in one
# way (its first comment says how); xmllint must report it as invalid, so the schema stays
# as strict as it claims to be.
# Variables: XMLLINT, SCHEMA, INVALID.
file(GLOB documents ${INVALID}/*.xml)
list(SORT documents)
if(NOT documents)
  message(FATAL_ERROR "no documents in ${INVALID}")
endif()
set(accepted)
foreach(document IN LISTS documents)
  execute_process(COMMAND ${XMLLINT} --noout --nonet --schema ${SCHEMA} ${document}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  # Status 3 is "does not validate"; anything else (1: not well-formed, 5: schema broken)
  # means the document or the schema is wrong, not that the schema caught the fault.
  if(NOT status EQUAL 3)
    list(APPEND accepted "${document} (xmllint status ${status})\n${errors}")
  endif()
endforeach()
if(accepted)
  list(JOIN accepted "\n" report)
  message(FATAL_ERROR "documents not rejected as invalid:\n${report}")
endif()
