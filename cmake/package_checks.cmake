# SPDX-License-Identifier: Apache-2.0
# Read by cpack for each package it makes: refuses a Debian package whose manual page would
# name the schema somewhere else than where the package puts it.
if(CPACK_GENERATOR STREQUAL "DEB" AND NOT CPACK_TARNWICK_CONFIGURED_PREFIX STREQUAL CPACK_PACKAGING_INSTALL_PREFIX)
  message(FATAL_ERROR "The Debian package installs below ${CPACK_PACKAGING_INSTALL_PREFIX}, but the build "
                      "was configured for ${CPACK_TARNWICK_CONFIGURED_PREFIX}: configure with "
                      "-DCMAKE_INSTALL_PREFIX=${CPACK_PACKAGING_INSTALL_PREFIX} first (scripts/package does).")
endif()
