# Finds the suite's own libraries under KORVANEJSON_SUITE_ROOT: the object model, the utility library and the console,
# as Korvane::Korvane, Korvane::orsutl and Korvane::PimuUtil. Headers are in include/ or in a folder there named after
# the library, and may have any names; libraries or import libraries are in lib/ or lib64/. Sets KorvaneSuite_FOUND.

set(KORVANEJSON_SUITE_ROOT "${KORVANEJSON_SUITE_ROOT}" CACHE PATH
  "The suite's development folder: include/ with its headers, lib/ with its libraries or import libraries")

# Only there: other libraries with these names do not belong to the suite.
function(_korvanesuite_find library)
  find_library(KorvaneSuite_${library}_LIBRARY NAMES ${library} PATHS "${KORVANEJSON_SUITE_ROOT}"
    PATH_SUFFIXES lib lib64 NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(KorvaneSuite_${library}_LIBRARY)
  string(TOLOWER ${library} folder)
  set(found)
  foreach(place include include/${library} include/${folder})
    if(IS_DIRECTORY "${KORVANEJSON_SUITE_ROOT}/${place}")
      list(APPEND found "${KORVANEJSON_SUITE_ROOT}/${place}")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES found)
  set(KorvaneSuite_${library}_INCLUDES "${found}" PARENT_SCOPE)
endfunction()
foreach(_library Korvane orsutl PimuUtil)
  _korvanesuite_find(${_library})
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(KorvaneSuite
  REQUIRED_VARS
    KORVANEJSON_SUITE_ROOT
    KorvaneSuite_Korvane_LIBRARY KorvaneSuite_Korvane_INCLUDES
    KorvaneSuite_orsutl_LIBRARY KorvaneSuite_orsutl_INCLUDES
    KorvaneSuite_PimuUtil_LIBRARY KorvaneSuite_PimuUtil_INCLUDES
  REASON_FAILURE_MESSAGE
    "Set KORVANEJSON_SUITE_ROOT to the folder with the suite's include and lib folders.")

if(KorvaneSuite_FOUND)
  foreach(_library Korvane orsutl PimuUtil)
    if(NOT TARGET Korvane::${_library})
      add_library(Korvane::${_library} UNKNOWN IMPORTED)
      set_target_properties(Korvane::${_library} PROPERTIES
        IMPORTED_LOCATION "${KorvaneSuite_${_library}_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${KorvaneSuite_${_library}_INCLUDES}")
    endif()
  endforeach()
  set_property(TARGET Korvane::Korvane PROPERTY INTERFACE_LINK_LIBRARIES Korvane::orsutl)
endif()
