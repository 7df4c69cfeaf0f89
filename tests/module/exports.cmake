# Compares the export table of LIBRARY with the names in EXPECTED, one a line.

include("${CMAKE_CURRENT_LIST_DIR}/compare.cmake")

if(WINDOWS)
  set(command ${OBJDUMP} -p "${LIBRARY}")
else()
  set(command ${NM} --dynamic --defined-only --format=posix "${LIBRARY}")
endif()
execute_process(COMMAND ${command} OUTPUT_VARIABLE output RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${command} ended with ${status}")
endif()

string(REPLACE "\n" ";" lines "${output}")
set(exported)
foreach(line IN LISTS lines)
  if(WINDOWS AND line MATCHES "^[ \t]*\\[ *[0-9]+\\] (\\+base\\[ *[0-9]+\\] +[0-9a-f]+ )?([A-Za-z_?@][^ \t\r]*)$")
    list(APPEND exported "${CMAKE_MATCH_2}")
  elseif(NOT WINDOWS AND line MATCHES "^([^ @]+)[^ ]* [A-Za-z] ")
    list(APPEND exported "${CMAKE_MATCH_1}")
  endif()
endforeach()
compare_exports("${LIBRARY}" "${exported}" "${EXPECTED}")
