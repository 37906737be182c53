# SPDX-License-Identifier: Apache-2.0
# The worked example in docs/examples.md quotes example files in full; each must appear there
# exactly as it is, so that the text never shows input or output the program no longer has.
# Variables: TEXT (the document that quotes), FILES (list).
file(READ ${TEXT} text)
foreach(file IN LISTS FILES)
  file(READ ${file} contents)
  string(FIND "${text}" "${contents}" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "${TEXT} does not quote ${file} as it is; copy the file into its code block")
  endif()
endforeach()
