# SPDX-License-Identifier: Apache-2.0
# Converts the coverage description with the built program and checks the fresh document
# both ways: it validates against the schema, and it uses every element and attribute that
# the schema declares, so that the schema declares nothing the program cannot write.
# Variables: TARNWICK, XMLLINT, SCHEMA, SOURCE (the coverage directory), OUTPUT.
file(REMOVE ${OUTPUT})
# No profile checks, so that every item type and attribute may appear. The undefined LIKE
# base is reported on the diagnostics output, which is not looked at.
execute_process(COMMAND ${TARNWICK} -p none ${SOURCE}/device.ddl -d ${SOURCE}/texts.dct -o ${OUTPUT}
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE diagnostics)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "conversion failed with status ${status}:\n${diagnostics}")
endif()
execute_process(COMMAND ${XMLLINT} --noout --nonet --schema ${SCHEMA} ${OUTPUT}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the schema rejects the fresh document ${OUTPUT}:\n${output}${errors}")
endif()

file(READ ${SCHEMA} schema)
file(READ ${OUTPUT} document)
string(REGEX MATCHALL "<xs:element name=\"[^\"]+\"" element_declarations "${schema}")
string(REGEX MATCHALL "<xs:attribute name=\"[^\"]+\"" attribute_declarations "${schema}")
list(LENGTH element_declarations element_count)
if(element_count LESS 100)
  message(FATAL_ERROR "found only ${element_count} element declarations in ${SCHEMA}")
endif()
set(unused)
foreach(declaration IN LISTS element_declarations)
  string(REGEX REPLACE ".*name=\"([^\"]+)\"" "\\1" name "${declaration}")
  if(NOT document MATCHES "<${name}[ />]")
    list(APPEND unused "element ${name}")
  endif()
endforeach()
foreach(declaration IN LISTS attribute_declarations)
  string(REGEX REPLACE ".*name=\"([^\"]+)\"" "\\1" name "${declaration}")
  if(NOT document MATCHES " ${name}=\"")
    list(APPEND unused "attribute ${name}")
  endif()
endforeach()
if(NOT document MATCHES " xml:space=\"preserve\"")
  list(APPEND unused "attribute xml:space")
endif()
if(unused)
  list(JOIN unused "\n  " report)
  message(FATAL_ERROR "declared in the schema but not in the fresh document ${OUTPUT}; extend "
                      "${SOURCE}/device.ddl or drop the declaration:\n  ${report}")
endif()
