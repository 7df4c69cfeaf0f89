# Finds an installed libjson, through CMAKE_PREFIX_PATH or libjson_ROOT, as libjson::libjson. Sets libjson_FOUND.

find_path(libjson_INCLUDE_DIR libjson.h PATH_SUFFIXES libjson)
find_library(libjson_LIBRARY NAMES json libjson)
mark_as_advanced(libjson_INCLUDE_DIR libjson_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(libjson REQUIRED_VARS libjson_LIBRARY libjson_INCLUDE_DIR)

if(libjson_FOUND AND NOT TARGET libjson::libjson)
  add_library(libjson::libjson UNKNOWN IMPORTED)
  set_target_properties(libjson::libjson PROPERTIES
    IMPORTED_LOCATION "${libjson_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${libjson_INCLUDE_DIR}")
endif()
