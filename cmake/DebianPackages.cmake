# The packages for Debian, one for each component: libkorvanejson0.1 with the libraries (their SONAMEs end in 0.1),
# libkorvanejson-dev and korvane-json. Sets KORVANEJSON_DEBIAN_PACKAGES.

# The version of the packages is in the changelog: the version of the product, a dash, and the revision of the packages.
# The revision begins with 0, so that packages that Debian itself may make count as newer.
set(_changelog "${PROJECT_SOURCE_DIR}/cmake/debian/changelog")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${_changelog}")
file(STRINGS "${_changelog}" _newest LIMIT_COUNT 1)
string(REPLACE . "\\." _version "${PROJECT_VERSION}")
if(NOT _newest MATCHES "^korvanejson \\(${_version}-(0[0-9A-Za-z.+~]+)\\) ")
  message(FATAL_ERROR "${_changelog} begins with\n${_newest}\ninstead of an entry for ${PROJECT_VERSION}")
endif()
set(_revision ${CMAKE_MATCH_1})
set(_version "${PROJECT_VERSION}-${_revision}")

set(_components libraries development)
if(KORVANEJSON_BUILD_PROGRAM)
  list(APPEND _components program)
endif()
set(KORVANEJSON_DEBIAN_LIBRARIES_NAME libkorvanejson${KORVANEJSON_SOVERSION})
set(KORVANEJSON_DEBIAN_DEVELOPMENT_NAME libkorvanejson-dev)
set(KORVANEJSON_DEBIAN_PROGRAM_NAME korvane-json)
set(KORVANEJSON_DEBIAN_PACKAGES)
foreach(_component IN LISTS _components)
  string(TOUPPER ${_component} _upper)
  list(APPEND KORVANEJSON_DEBIAN_PACKAGES ${KORVANEJSON_DEBIAN_${_upper}_NAME})
  set(CPACK_DEBIAN_${_upper}_PACKAGE_NAME ${KORVANEJSON_DEBIAN_${_upper}_NAME})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${_components})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE korvanejson)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${_revision})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${KORVANEJSON_WEB_ADDRESS}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# The dependency of other packages that link the libraries.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
list(APPEND CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/debian/prepare.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/debian/finish.cmake")

# Otherwise each description would begin with the summary of the project.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(_about
"KorvaneJson turns objects of the Korvane object model, trees of projects,
studies, parts, iterations and their files, into JSON documents for a
data-management server, and documents into objects again.

")

set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/debian/triggers")
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION
"JSON documents of computer-aided-engineering projects - libraries
${_about}This package holds the libraries that programs need to run.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${KORVANEJSON_DEBIAN_LIBRARIES_NAME} (= ${_version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS ${KORVANEJSON_DEBIAN_PROGRAM_NAME})
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"JSON documents of computer-aided-engineering projects - development files
${_about}This package holds what is needed to build programs with the libraries:
headers, the CMake package, the pkg-config file, the guide for developers
and a first program.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
# dpkg-shlibdeps only knows the libraries of installed packages.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${KORVANEJSON_DEBIAN_LIBRARIES_NAME} (>= ${_version})")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION
"JSON documents of computer-aided-engineering projects - program
${_about}This package holds the command-line program korvane-json, which reads
directories of simulation files as projects, writes and imports their
documents, and compares projects.")
