# SPDX-License-Identifier: Apache-2.0
# What cpack makes of the installed tree: a Debian package on Linux, a zip on Windows. The
# description of the package is set here once for both; the generator follows the platform.
set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_VENDOR "The Tarnwick developers")
set(CPACK_PACKAGE_CONTACT "The Tarnwick developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_DESCRIPTION [[
tarnwick reads a device description written in EDDL (IEC 61804-3), HART or
PROFIBUS, through a C-like preprocessor, parses and validates it, and writes it
as one XML document with the dictionary texts and images it uses. Diagnostics
name file and line; the exit status tells a build step whether the document
was written.]])
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)  # named tarnwick-VERSION-win64.zip by CPack's default
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_SYSTEM_NAME ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})  # tarnwick-VERSION-Linux-x86_64.deb
  set(CPACK_DEBIAN_PACKAGE_SECTION devel)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)  # Depends from the libraries the program links (file, dpkg-dev)
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS libxml2-utils)  # xmllint checks documents against the schema
  # The manual page names the schema below the prefix given when configuring, which must
  # then be the package's.
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_TARNWICK_CONFIGURED_PREFIX ${CMAKE_INSTALL_PREFIX})
  set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/package_checks.cmake)
endif()

include(CPack)
