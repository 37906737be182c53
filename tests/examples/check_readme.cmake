# README.md quotes some example files in full; each must appear there exactly as it is, so
# that the worked example never shows input or output the program no longer has.
# Variables: README, FILES (list).
file(READ ${README} readme)
foreach(file IN LISTS FILES)
  file(READ ${file} contents)
  string(FIND "${readme}" "${contents}" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "${README} does not quote ${file} as it is; copy the file into its code block")
  endif()
endforeach()
