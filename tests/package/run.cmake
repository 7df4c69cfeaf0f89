# Installs the build tree BUILD into WORK and builds and runs the outside project against it, once with the CMake
# package and, where PKG_CONFIG is given, once with the pkg-config file.

set(expected [[{"id":"1","name":"Outside","createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer",]]
  [["type":"SIMULATION","metaData":{},"children":[],"files":[],"subType":"SDM"}]])
list(JOIN expected "" expected)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN} ended with ${status}\n${output}\n${errors}")
  endif()
  string(STRIP "${output}" output)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_document how)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The program built with ${how} printed\n${output}\ninstead of\n${expected}")
  endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
run(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/prefix")
set(toolchain)
if(TOOLCHAIN)
  set(toolchain "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
endif()
run(${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}/outside" -B "${WORK}/build" -G Ninja ${toolchain}
  "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}" "-DCMAKE_FIND_ROOT_PATH=${WORK}/prefix"
  "-DCMAKE_PREFIX_PATH=${WORK}/prefix")
run(${CMAKE_COMMAND} --build "${WORK}/build")
if(TOOLCHAIN)
  # A Windows program finds its libraries beside itself.
  file(GLOB libraries "${WORK}/prefix/bin/*.dll" "${BUILD}/bin/lib*-*.dll")
  file(COPY ${libraries} DESTINATION "${WORK}/build")
  run(${EMULATOR} "${WORK}/build/outside.exe")
else()
  run("${WORK}/build/outside")
endif()
expect_document("the CMake package")

if(PKG_CONFIG)
  file(GLOB_RECURSE pc "${WORK}/prefix/korvanejson.pc")
  get_filename_component(pc_folder "${pc}" DIRECTORY)
  get_filename_component(library_folder "${pc_folder}" DIRECTORY)
  run(${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${pc_folder}" ${PKG_CONFIG} --cflags --libs korvanejson)
  separate_arguments(flags UNIX_COMMAND "${FLAGS} -std=c++20 ${output}")
  run(${COMPILER} -o "${WORK}/outside" "${CMAKE_CURRENT_LIST_DIR}/outside/main.cpp" ${flags}
    "-Wl,-rpath,${library_folder}")
  run("${WORK}/outside")
  expect_document("the pkg-config file")
endif()
