# What an installed tree has besides libraries and headers: the CMake package and the pkg-config files, the compiler's
# runtime, the manual page, documentation and examples.

include(CMakePackageConfigHelpers)
include(CompilerRuntime)
include(Packages)

set(_package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/KorvaneJson")
foreach(namespace IN LISTS KORVANEJSON_EXPORTED_NAMESPACES)
  install(EXPORT ${namespace}Targets NAMESPACE ${namespace}:: DESTINATION "${_package_folder}" COMPONENT development)
endforeach()
list(TRANSFORM KORVANEJSON_FOUND_PACKAGES
  REPLACE "(.+)" "${CMAKE_CURRENT_LIST_DIR}/Find\\1.cmake" OUTPUT_VARIABLE _find_modules)
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/KorvaneJsonConfig.cmake.in" "${PROJECT_BINARY_DIR}/KorvaneJsonConfig.cmake"
  INSTALL_DESTINATION "${_package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KorvaneJsonConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/KorvaneJsonConfig.cmake"
  "${PROJECT_BINARY_DIR}/KorvaneJsonConfigVersion.cmake"
  ${_find_modules}
  DESTINATION "${_package_folder}" COMPONENT development)

# For programs on Windows that use UTF-8 as their code page.
if(WIN32)
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/utf8-code-page.manifest"
    DESTINATION "${_package_folder}" COMPONENT development)
endif()

# The files could not say where libraries of others are.
if(NOT KORVANEJSON_FOUND_PACKAGES)
  if(KORVANEJSON_SYSTEM_PREFIX)
    set(KORVANEJSON_PC_PREFIX /usr)
  else()
    # Relative, so that the installed tree can be moved.
    file(RELATIVE_PATH _prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    set(KORVANEJSON_PC_PREFIX "\${pcfiledir}/${_prefix_from_pc}")
  endif()
  # The file is called libjson everywhere, but where names of libraries begin with lib, -l adds that prefix.
  if(WIN32)
    set(KORVANEJSON_LIBJSON_LINK -llibjson)
  else()
    set(KORVANEJSON_LIBJSON_LINK "-l:libjson${CMAKE_SHARED_LIBRARY_SUFFIX}")
  endif()
  set(_description_KorvaneJson "${PROJECT_DESCRIPTION}")
  set(_description_KorvaneExchange "Streams, reads, updates and compares the documents of KorvaneJson, with reports")
  foreach(KORVANEJSON_PC_NAME IN ITEMS KorvaneJson KorvaneExchange)
    set(KORVANEJSON_PC_DESCRIPTION "${_description_${KORVANEJSON_PC_NAME}}")
    string(TOLOWER "${KORVANEJSON_PC_NAME}.pc" _pc)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/library.pc.in" "${PROJECT_BINARY_DIR}/${_pc}" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${_pc}"
      DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
  endforeach()
endif()

# So that programs that use the library find the runtime beside it.
if(MSVC)
  set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION "${CMAKE_INSTALL_BINDIR}")
  include(InstallRequiredSystemLibraries)
elseif(KORVANEJSON_RUNTIME_LIBRARIES)
  install(PROGRAMS ${KORVANEJSON_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

# The program contains code of CLI11 and toml++, so their licences have to be included; the build machine has them
# beside the headers.
set(_cli11_licence)
if(KORVANEJSON_BUILD_PROGRAM AND EXISTS "${CLI11_ROOT}/../share/doc/libcli11-dev/copyright")
  set(_cli11_licence "${CLI11_ROOT}/../share/doc/libcli11-dev/copyright")
endif()
set(_toml_licence)
if(KORVANEJSON_BUILD_PROGRAM AND EXISTS "${tomlplusplus_ROOT}/../share/doc/libtomlplusplus-dev/copyright")
  set(_toml_licence "${tomlplusplus_ROOT}/../share/doc/libtomlplusplus-dev/copyright")
endif()

# So is that of three.js, which is in the pages that the program writes.
set(_three_licence)
if(KORVANEJSON_BUILD_PROGRAM AND KORVANEJSON_THREE_LICENCE)
  set(_three_licence "${KORVANEJSON_THREE_LICENCE}")
endif()

if(KORVANEJSON_DEBIAN_PACKAGES)
  include(DebianDocumentation)
  return()
endif()

# On Windows the documentation is at the top of the folder. Its texts link to each other as in the sources.
if(WIN32)
  set(_document_folder .)
else()
  set(_document_folder "${CMAKE_INSTALL_DATADIR}/doc/korvanejson")
endif()
install(FILES
  "${PROJECT_SOURCE_DIR}/LICENSE"
  "${PROJECT_SOURCE_DIR}/README.md"
  "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  DESTINATION "${_document_folder}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${_document_folder}"
  FILES_MATCHING PATTERN "*.md" PATTERN "*.json" PATTERN "*.svg" PATTERN "*.png")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${_document_folder}")

if(MINGW)
  string(REGEX MATCH "^[0-9]+" KORVANEJSON_COMPILER_MAJOR "${CMAKE_CXX_COMPILER_VERSION}")
  configure_file("${PROJECT_SOURCE_DIR}/docs/README-Windows.txt.in" "${PROJECT_BINARY_DIR}/README-Windows.txt"
    @ONLY NEWLINE_STYLE CRLF)
  install(FILES "${PROJECT_BINARY_DIR}/README-Windows.txt" DESTINATION "${_document_folder}")
  # The licences of the runtime and of what the program contains, if the build machine has them.
  foreach(_licence IN ITEMS
      doc/gcc-mingw-w64-base/copyright=gcc-mingw-w64.txt
      doc/mingw-w64-x86-64-dev/copyright=mingw-w64.txt
      common-licenses/GPL-3=GPL-3.txt
      doc/libcli11-dev/copyright=cli11.txt
      doc/libtomlplusplus-dev/copyright=tomlplusplus.txt)
    string(REGEX MATCH "^(.*)=(.*)$" _licence "${_licence}")
    if(CMAKE_CROSSCOMPILING AND EXISTS "/usr/share/${CMAKE_MATCH_1}")
      install(FILES "/usr/share/${CMAKE_MATCH_1}" DESTINATION licences RENAME "${CMAKE_MATCH_2}")
    endif()
  endforeach()
  install(FILES ${_three_licence} DESTINATION licences RENAME three.js.txt)
elseif(NOT WIN32 AND KORVANEJSON_BUILD_PROGRAM)
  install(FILES "${PROJECT_SOURCE_DIR}/docs/korvane-json.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES ${_cli11_licence} DESTINATION "${_document_folder}/licences" RENAME CLI11.txt)
  install(FILES ${_three_licence} DESTINATION "${_document_folder}/licences" RENAME three.js.txt)
  install(FILES ${_toml_licence} DESTINATION "${_document_folder}/licences" RENAME tomlplusplus.txt)
endif()
