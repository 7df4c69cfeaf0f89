# Finds the suite's own libraries under KORVANEJSON_SUITE_ROOT: the object model, the utility library and the console,
# as Korvane::Korvane, Korvane::orsutl and Korvane::PimuUtil. Headers lie in include/ or in a folder of it named after
# the library, libraries or import libraries in lib/ or lib64/. Sets KorvaneSuite_FOUND.

set(KORVANEJSON_SUITE_ROOT "${KORVANEJSON_SUITE_ROOT}" CACHE PATH
  "The suite's development folder: include/ with its headers, lib/ with its libraries or import libraries")

# Only there: other libraries of these names are none of the suite's.
function(_korvanesuite_find library header)
  string(TOLOWER ${library} folder)
  set(places PATHS "${KORVANEJSON_SUITE_ROOT}" NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  find_path(KorvaneSuite_${library}_INCLUDE ${header} ${places}
    PATH_SUFFIXES include include/${library} include/${folder})
  find_library(KorvaneSuite_${library}_LIBRARY NAMES ${library} ${places} PATH_SUFFIXES lib lib64)
  mark_as_advanced(KorvaneSuite_${library}_INCLUDE KorvaneSuite_${library}_LIBRARY)
endfunction()
_korvanesuite_find(Korvane CAEObject.h)
_korvanesuite_find(orsutl OuString.h)
_korvanesuite_find(PimuUtil PimuUtil.h)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(KorvaneSuite
  REQUIRED_VARS
    KORVANEJSON_SUITE_ROOT
    KorvaneSuite_Korvane_LIBRARY KorvaneSuite_Korvane_INCLUDE
    KorvaneSuite_orsutl_LIBRARY KorvaneSuite_orsutl_INCLUDE
    KorvaneSuite_PimuUtil_LIBRARY KorvaneSuite_PimuUtil_INCLUDE
  REASON_FAILURE_MESSAGE
    "Set KORVANEJSON_SUITE_ROOT to the folder with the suite's include and lib folders.")

if(KorvaneSuite_FOUND)
  foreach(library Korvane orsutl PimuUtil)
    if(NOT TARGET Korvane::${library})
      add_library(Korvane::${library} UNKNOWN IMPORTED)
      set_target_properties(Korvane::${library} PROPERTIES
        IMPORTED_LOCATION "${KorvaneSuite_${library}_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${KorvaneSuite_${library}_INCLUDE}")
    endif()
  endforeach()
  set_property(TARGET Korvane::Korvane PROPERTY INTERFACE_LINK_LIBRARIES Korvane::orsutl)
endif()
