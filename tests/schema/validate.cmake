# Validates XML documents against the output schema with xmllint.
# Variables: XMLLINT, SCHEMA, FILES (list of glob patterns, expanded recursively when the
# test runs, so that new golden cases and examples are covered without reconfiguring).
if(NOT XMLLINT)
  message(FATAL_ERROR "xmllint was not found when the build was configured; install it "
                      "(Debian package libxml2-utils) and configure again")
endif()
set(documents)
foreach(pattern IN LISTS FILES)
  file(GLOB_RECURSE matches ${pattern})
  list(APPEND documents ${matches})
endforeach()
list(SORT documents)
list(LENGTH documents count)
if(count EQUAL 0)
  # A moved directory must not turn this test into one that checks nothing.
  message(FATAL_ERROR "no documents match ${FILES}")
endif()
execute_process(COMMAND ${XMLLINT} --noout --nonet --schema ${SCHEMA} ${documents}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  # Keep the complaints, drop the line of each document that passed.
  string(REGEX REPLACE "[^\n]* validates\n" "" errors "${errors}")
  message(FATAL_ERROR "xmllint status ${status}: the schema ${SCHEMA} rejects documents:\n${output}${errors}")
endif()
message(STATUS "${count} documents validate against ${SCHEMA}")
