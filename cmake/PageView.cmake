# What shows models in pages: the variable KORVANEJSON_PAGE_VIEW is the script bundled with three.js, and
# KORVANEJSON_THREE_LICENCE the licence of three.js, which belongs into every page with that script. Both are empty if
# the folder KORVANEJSON_THREE_SOURCE or esbuild is missing: the program is built without the view then, and pages say
# so.

set(KORVANEJSON_THREE_SOURCE "" CACHE PATH
  "A folder with three.js's three.module.js, three.core.js and LICENSE, for the view of models in pages")
find_program(KORVANEJSON_ESBUILD esbuild)

set(KORVANEJSON_PAGE_VIEW "")
set(KORVANEJSON_THREE_LICENCE "")
set(_missing "")
foreach(_file three.module.js three.core.js LICENSE)
  if(NOT EXISTS "${KORVANEJSON_THREE_SOURCE}/${_file}")
    set(_missing "three.js (./dev three puts it into build/three)")
  endif()
endforeach()
if(NOT KORVANEJSON_ESBUILD)
  set(_missing "esbuild (Debian: esbuild)")
endif()
if(_missing)
  message(STATUS "Pages are written without the view of models, which needs ${_missing}")
  return()
endif()

set(KORVANEJSON_PAGE_VIEW "${PROJECT_BINARY_DIR}/page/meshview.js")
set(KORVANEJSON_THREE_LICENCE "${KORVANEJSON_THREE_SOURCE}/LICENSE")
