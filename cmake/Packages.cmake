# The packages that cpack makes from the installed tree: a ZIP for Windows, a TGZ for Linux, or DEBs from a tree that is
# configured for the system's own folders (CMAKE_INSTALL_PREFIX=/usr) on a Debian machine.
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
  # Libraries of others are not in packages, so Debian's packages could not depend on them.
  if(KORVANEJSON_SYSTEM_PREFIX AND NOT KORVANEJSON_FOUND_PACKAGES AND EXISTS /etc/debian_version)
    # The first two (Debian: dpkg-dev, file) find out what the packages depend on.
    find_program(KORVANEJSON_SHLIBDEPS dpkg-shlibdeps)
    find_program(KORVANEJSON_FILE file)
    find_program(KORVANEJSON_GZIP gzip)
    if(KORVANEJSON_SHLIBDEPS AND KORVANEJSON_FILE AND KORVANEJSON_GZIP)
      include(DebianPackages)
    endif()
  endif()
endif()

include(CPack)
