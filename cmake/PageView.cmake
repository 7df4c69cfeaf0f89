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
set(_view "${PROJECT_SOURCE_DIR}/host/page/web/meshview.js")
add_custom_command(OUTPUT "${KORVANEJSON_PAGE_VIEW}"
  COMMAND ${KORVANEJSON_ESBUILD} "${_view}" --bundle --minify --format=iife --target=es2020 --log-level=warning
    "--alias:three=${KORVANEJSON_THREE_SOURCE}/three.module.js" "--outfile=${KORVANEJSON_PAGE_VIEW}"
  DEPENDS "${_view}" "${KORVANEJSON_THREE_SOURCE}/three.module.js" "${KORVANEJSON_THREE_SOURCE}/three.core.js"
  COMMENT "Bundling the view of models"
  VERBATIM)
