# The packages that cpack makes of the installed tree: a ZIP for Windows, a TGZ and a DEB for Linux.
# KORVANEJSON_PACKAGE_NAME is the name of a ZIP and a TGZ, and of the folder in them.

string(TOLOWER "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" _platform)
string(REPLACE amd64 x86_64 _platform "${_platform}")
set(KORVANEJSON_PACKAGE_NAME "${PROJECT_NAME}-${PROJECT_VERSION}-${_platform}")

if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_PACKAGE_VENDOR "Korvane Software")
set(CPACK_PACKAGE_CONTACT "Korvane Software <korvanejson@korvane.example>")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
set(CPACK_RESOURCE_FILE_README "${PROJECT_SOURCE_DIR}/README.md")
set(CPACK_PACKAGE_FILE_NAME "${KORVANEJSON_PACKAGE_NAME}")
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/PackageLocale.cmake")

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
  set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/PackageFolders.cmake")
  # Without these tools (Debian: dpkg-dev, file) nobody would know what the package depends on.
  find_program(KORVANEJSON_SHLIBDEPS dpkg-shlibdeps)
  find_program(KORVANEJSON_FILE file)
  if(KORVANEJSON_SHLIBDEPS AND KORVANEJSON_FILE)
    list(APPEND CPACK_GENERATOR DEB)
  endif()
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME korvanejson)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"KorvaneJson turns objects of the Korvane object model into JSON documents for
the data-management server and makes objects of the server's documents again.

This package holds the libraries with their headers, CMake package and
pkg-config file, the command-line host korvane-json, documentation and
examples.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# What other packages that link the libraries depend on, and the linker's cache at installation.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
