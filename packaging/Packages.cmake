# SPDX-License-Identifier: MIT
# The Debian packages, made by cpack into build/packages/.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lanewright)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Lanewright authors <maintainers@lanewright.example.net>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_COMPONENTS_ALL lanewright dev python)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)

set(CPACK_DEBIAN_LANEWRIGHT_PACKAGE_NAME lanewright)
set(CPACK_DEBIAN_LANEWRIGHT_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LANEWRIGHT_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_SOURCE_DIR}/debian/conffiles;${CMAKE_CURRENT_SOURCE_DIR}/debian/prerm")
set(CPACK_COMPONENT_LANEWRIGHT_DESCRIPTION "batch base calling of capillary sequencing runs
Calls the bases of plates of raw samples, stores processed samples, exports
ABD, SCF, FASTA and text, and keeps a record of all it did. With lanetools,
which brings in ABIF files, runs plates in parallel, sums up the results and
exports FASTQ, SAM and BAM.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME lanewright-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DESCRIPTION "interface for base-caller libraries of Lanewright
The C header of the interface, with files for CMake and pkg-config, and an
example library.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-lanewright)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3, python3-numpy")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "reader of Lanewright's sample files in Python
Reads raw, processed and failed samples: curves, current, bases with positions
and qualities, and the description of the run.")
include(CPack)

# What every Debian package has: who holds the rights, and what has changed.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE LICENSE_TEXT)
string(REGEX REPLACE "^MIT License\n\n[^\n]*\n\n" "" LICENSE_TEXT "${LICENSE_TEXT}")
string(REGEX REPLACE "\n+$" "" LICENSE_TEXT "${LICENSE_TEXT}")
string(REPLACE "\n\n" "\n.\n" LICENSE_TEXT "${LICENSE_TEXT}")
string(REPLACE "\n" "\n " LICENSE_TEXT "${LICENSE_TEXT}")
configure_file(debian/copyright.in copyright @ONLY)
configure_file(debian/changelog.in changelog @ONLY)
add_custom_command(OUTPUT changelog.gz DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/changelog VERBATIM
  COMMAND ${GZIP} -9nkf ${CMAKE_CURRENT_BINARY_DIR}/changelog)
add_custom_target(package-changelog ALL DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
foreach(pair lanewright:lanewright dev:lanewright-dev python:python3-lanewright)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 component)
  list(GET pair 1 package)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
    DESTINATION share/doc/${package} COMPONENT ${component})
endforeach()
install(FILES debian/lintian-overrides DESTINATION share/lintian/overrides RENAME lanewright COMPONENT lanewright)
