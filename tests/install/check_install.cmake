# SPDX-License-Identifier: Apache-2.0
# Installs the build, stripped, into a scratch prefix and checks the installed tree: the
# program runs, the schema (with the file it imports) validates a document, the checker finds
# nothing in the example, the view's stylesheet makes a page of the document, the manual
# pages are there, the converter's names the schema where the configured prefix puts it and,
# when groff or mandoc is at hand, they render without warnings.
# Variables: BUILD, CONFIG, PREFIX, BINDIR, DATADIR, MANDIR, SCHEMA_DIR (the schema's
# directory below the configured prefix), BUILT_PROGRAM, XMLLINT, XSLTPROC, DOCUMENT (an example
# document; the description beside it, with .ddl and .dct, is converted by the installed
# program and must give that document again).
file(REMOVE_RECURSE ${PREFIX})
set(config)
if(CONFIG)
  set(config --config ${CONFIG})
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --strip ${config}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cmake --install failed with status ${status}:\n${output}${errors}")
endif()

set(program ${PREFIX}/${BINDIR}/tarnwick)
set(schema ${PREFIX}/${DATADIR}/tarnwick/tarnwick.xsd)
set(manual ${PREFIX}/${MANDIR}/man1/tarnwick.1)
set(checker ${PREFIX}/${BINDIR}/tarnwick-check)
set(checker_manual ${PREFIX}/${MANDIR}/man1/tarnwick-check.1)
set(stylesheet ${PREFIX}/${DATADIR}/tarnwick/tarnwick-html.xsl)
foreach(file IN ITEMS ${program} ${schema} ${PREFIX}/${DATADIR}/tarnwick/xml-namespace.xsd ${manual}
                      ${checker} ${checker_manual} ${stylesheet})
  if(NOT EXISTS ${file} OR IS_DIRECTORY ${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

# Stripped: its symbols are gone, so it is smaller than the program built.
file(SIZE ${program} installed_size)
file(SIZE ${BUILT_PROGRAM} built_size)
if(NOT installed_size LESS built_size)
  message(FATAL_ERROR "${program} is not stripped: ${installed_size} bytes, built ${built_size}")
endif()
file(READ ${manual} manual_text)
string(FIND "${manual_text}" "${SCHEMA_DIR}/tarnwick.xsd" position)
if(position EQUAL -1 OR manual_text MATCHES "@[A-Z_]+@")
  message(FATAL_ERROR "${manual} does not name the schema as ${SCHEMA_DIR}/tarnwick.xsd")
endif()

# The installed program runs on its own.
execute_process(COMMAND ${program} -h RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 1 OR NOT output MATCHES "Usage: tarnwick \\[options\\] file")
  message(FATAL_ERROR "${program} -h: status ${status}, output:\n${output}${errors}")
endif()
get_filename_component(example ${DOCUMENT} NAME_WE)
get_filename_component(example_dir ${DOCUMENT} DIRECTORY)
set(converted ${PREFIX}/${example}.xml)
execute_process(COMMAND ${program} -p HART ${example_dir}/${example}.ddl -d ${example_dir}/${example}.dct -o ${converted}
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the installed program failed on ${example}.ddl with status ${status}:\n${errors}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${converted} ${DOCUMENT} RESULT_VARIABLE differs)
if(differs)
  message(FATAL_ERROR "the installed program wrote ${converted}, which differs from ${DOCUMENT}")
endif()

# The installed checker finds nothing in the example; the installed stylesheet makes a page
# of its document.
execute_process(COMMAND ${checker} -p HART ${example_dir}/${example}.ddl -d ${example_dir}/${example}.dct
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the installed checker: status ${status} on ${example}.ddl:\n${output}${errors}")
endif()
execute_process(COMMAND ${XSLTPROC} ${stylesheet} ${converted}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0 OR NOT output MATCHES "<html")
  message(FATAL_ERROR "the installed stylesheet made no page of ${converted} (status ${status}):\n${errors}")
endif()

# The installed schema finds what it imports.
if(NOT XMLLINT)
  message(FATAL_ERROR "xmllint was not found when the build was configured; install it "
                      "(Debian package libxml2-utils) and configure again")
endif()
execute_process(COMMAND ${XMLLINT} --noout --nonet --schema ${schema} ${converted}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the installed schema does not validate ${converted}:\n${output}${errors}")
endif()

# The manual page renders cleanly, where a formatter is installed.
find_program(GROFF groff)
find_program(MANDOC mandoc)
foreach(page IN ITEMS ${manual} ${checker_manual})
  if(GROFF)
    execute_process(COMMAND ${GROFF} -man -Tutf8 -ww -z ${page}
                    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  elseif(MANDOC)
    execute_process(COMMAND ${MANDOC} -Tlint -Wwarning ${page}
                    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  else()
    message(STATUS "neither groff nor mandoc found; the manual pages are not rendered")
    return()
  endif()
  if(NOT status EQUAL 0 OR NOT errors STREQUAL "" OR NOT output STREQUAL "")
    message(FATAL_ERROR "${page} does not render cleanly (status ${status}):\n${output}${errors}")
  endif()
endforeach()
