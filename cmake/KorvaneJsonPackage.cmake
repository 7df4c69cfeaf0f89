# What makes an installed tree usable: the CMake package and the pkg-config file.

include(CMakePackageConfigHelpers)

set(_package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/KorvaneJson")
foreach(namespace libjson Korvane KorvaneJson)
  install(EXPORT ${namespace}Targets NAMESPACE ${namespace}:: DESTINATION "${_package_folder}")
endforeach()
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/KorvaneJsonConfig.cmake.in" "${PROJECT_BINARY_DIR}/KorvaneJsonConfig.cmake"
  INSTALL_DESTINATION "${_package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KorvaneJsonConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/KorvaneJsonConfig.cmake"
  "${PROJECT_BINARY_DIR}/KorvaneJsonConfigVersion.cmake"
  DESTINATION "${_package_folder}")

file(RELATIVE_PATH KORVANEJSON_PREFIX_FROM_PC
  "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
# The file of libjson is called so everywhere, which the linker's -l does not expect where libraries begin with lib.
if(WIN32)
  set(KORVANEJSON_LIBJSON_LINK -llibjson)
else()
  set(KORVANEJSON_LIBJSON_LINK "-l:libjson${CMAKE_SHARED_LIBRARY_SUFFIX}")
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/korvanejson.pc.in" "${PROJECT_BINARY_DIR}/korvanejson.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/korvanejson.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(FILES
  "${PROJECT_SOURCE_DIR}/LICENSE"
  "${PROJECT_SOURCE_DIR}/README.md"
  "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  "${PROJECT_SOURCE_DIR}/docs/document.md"
  "${PROJECT_SOURCE_DIR}/docs/document.schema.json"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/korvanejson")
