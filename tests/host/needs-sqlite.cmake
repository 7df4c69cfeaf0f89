# Configuring the tree SOURCE without a usable SQLite stops with a message that says what to do.

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

set(toolchain "-DCMAKE_CXX_COMPILER=${COMPILER}")
if(TOOLCHAIN)
  list(APPEND toolchain "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
endif()

# expect_refused(<text> [cmake options]...): the message has the text, and says how to go on.
function(expect_refused text)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}/build" --fresh -G "${GENERATOR}" ${toolchain}
      -DKORVANEJSON_BUILD_TESTS=OFF ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  if(status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: the tree was configured")
  endif()
  foreach(wanted "${text}" KORVANEJSON_SQLITE_SOURCE)
    string(FIND "${errors}" "${wanted}" position)
    if(position EQUAL -1)
      message(FATAL_ERROR "${ARGN}: the message does not say \"${wanted}\":\n${errors}")
    endif()
  endforeach()
endfunction()

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/empty")
file(WRITE "${WORK}/old/sqlite3.c" "")
file(WRITE "${WORK}/old/sqlite3.h" "#define SQLITE_VERSION        \"3.8.9\"\n")
expect_refused("SQLite 3.33 or later, which was not found"
  -DKORVANEJSON_SQLITE_SOURCE= -DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON)
expect_refused("${WORK}/empty has no sqlite3.c" "-DKORVANEJSON_SQLITE_SOURCE=${WORK}/empty")
expect_refused("${WORK}/old holds SQLite 3.8.9" "-DKORVANEJSON_SQLITE_SOURCE=${WORK}/old")

# The library does without.
run(${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}/build" --fresh -G "${GENERATOR}" ${toolchain}
  -DKORVANEJSON_BUILD_TESTS=OFF -DKORVANEJSON_BUILD_PROGRAM=OFF "-DKORVANEJSON_SQLITE_SOURCE=${WORK}/empty")
