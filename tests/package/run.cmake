# Installs the build tree BUILD into WORK, or makes a package of the kind PACKAGE (ZIP, TGZ) there and unpacks it,
# and builds and runs the outside project against the tree, once with the CMake package and, where PKG_CONFIG is
# given, once with the pkg-config file. What a package holds is checked in contents.cmake.

cmake_minimum_required(VERSION 3.25)

set(expected [[{"id":"1","name":"Outside","createdDate":"2026-03-01T09:30:00Z","createdBy":"engineer",]]
  [["type":"SIMULATION","metaData":{},"children":[],"files":[],"subType":"SDM"}]])
list(JOIN expected "" expected)

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

# Expects `output` of the program that is linked with a library in a certain way.
function(expect_document how)
  if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The program built with ${how} printed\n${output}\ninstead of\n${expected}")
  endif()
endfunction()

# Configures and builds a project that knows nothing of the sources against the tree PREFIX. The program comes into
# the folder of the build whatever the generator.
function(build_outside source build)
  set(toolchain)
  if(TOOLCHAIN)
    list(APPEND toolchain "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
  endif()
  if(NOT GENERATOR MATCHES "Visual Studio")
    list(APPEND toolchain "-DCMAKE_CXX_COMPILER=${COMPILER}")
  endif()
  run(${CMAKE_COMMAND} -S "${source}" -B "${build}" -G "${GENERATOR}" ${toolchain}
    "-DCMAKE_CXX_FLAGS=${FLAGS}" "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DCMAKE_RUNTIME_OUTPUT_DIRECTORY=$<1:${build}>"
    "-DCMAKE_FIND_ROOT_PATH=${PREFIX}" "-DCMAKE_PREFIX_PATH=${PREFIX}")
  run(${CMAKE_COMMAND} --build "${build}" --config "${CONFIG}")
endfunction()

file(REMOVE_RECURSE "${WORK}")
if(PACKAGE)
  include("${CMAKE_CURRENT_LIST_DIR}/checks.cmake")
  include("${CMAKE_CURRENT_LIST_DIR}/unpack.cmake")
  include("${CMAKE_CURRENT_LIST_DIR}/contents.cmake")
  if(PACKAGE STREQUAL TGZ)
    include("${CMAKE_CURRENT_LIST_DIR}/elsewhere.cmake")
  endif()
else()
  set(PREFIX "${WORK}/prefix")
  run(${CMAKE_COMMAND} --install "${BUILD}" --config "${CONFIG}" --prefix "${PREFIX}")
endif()

build_outside("${CMAKE_CURRENT_LIST_DIR}/outside" "${WORK}/build")
if(WINDOWS)
  # A Windows program finds its libraries beside itself.
  file(GLOB libraries "${PREFIX}/bin/*.dll")
  file(COPY ${libraries} DESTINATION "${WORK}/build")
  set(suffix .exe)
else()
  set(suffix)
endif()
foreach(program outside outside-exchange)
  run(${EMULATOR} "${WORK}/build/${program}${suffix}")
  expect_document("the CMake package")
endforeach()

if(PKG_CONFIG)
  file(GLOB_RECURSE pc "${PREFIX}/korvanejson.pc")
  get_filename_component(pc_folder "${pc}" DIRECTORY)
  get_filename_component(library_folder "${pc_folder}" DIRECTORY)
  set(source_of_korvanejson main.cpp)
  set(source_of_korvaneexchange exchange.cpp)
  foreach(name korvanejson korvaneexchange)
    run(${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${pc_folder}" ${PKG_CONFIG} --cflags --libs ${name})
    separate_arguments(flags UNIX_COMMAND "${FLAGS} -std=c++20 ${output}")
    run(${COMPILER} -o "${WORK}/${name}" "${CMAKE_CURRENT_LIST_DIR}/outside/${source_of_${name}}" ${flags}
      "-Wl,-rpath,${library_folder}")
    run("${WORK}/${name}")
    expect_document("${name}.pc")
  endforeach()
endif()
