# SPDX-License-Identifier: Apache-2.0
# Every Windows executable carries the same application manifest (UTF-8 code page, long
# paths) under a name of its own.
function(tarnwick_windows_manifest target manifest_name)
  if(NOT WIN32)
    return()
  endif()
  enable_language(RC)
  set(manifest_file ${CMAKE_CURRENT_BINARY_DIR}/${target}.exe.manifest)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/application.manifest.in ${manifest_file} @ONLY)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/windows/application.rc.in
                 ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()
