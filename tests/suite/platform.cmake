# Lays out the platform libraries of the build tree BUILD as a suite and as an installed libjson, builds the product
# alone against them and runs PROGRAMS, which were built with the embedded ones, with the library that comes out.

cmake_minimum_required(VERSION 3.25)

include("${CMAKE_CURRENT_LIST_DIR}/Building.cmake")

file(REMOVE_RECURSE "${WORK}")
run(${CMAKE_COMMAND} --install "${BUILD}" --config "${CONFIG}" --prefix "${WORK}/installed")

# The suite's headers are in one folder; headers that only the embedded object model has are not there.
foreach(library korvane orsutl pimuutil)
  file(GLOB headers "${WORK}/installed/include/${library}/*.h")
  list(FILTER headers EXCLUDE REGEX "/Embedded[^/]*$")
  file(COPY ${headers} DESTINATION "${WORK}/suite/include")
endforeach()
lay_out_libraries("${WORK}/installed" "${WORK}/suite" Korvane orsutl PimuUtil)
lay_out_libjson("${WORK}/installed" "${WORK}/libjson")
file(REMOVE_RECURSE "${WORK}/installed")

set(options
  -DKORVANEJSON_PLATFORM=suite "-DKORVANEJSON_SUITE_ROOT=${WORK}/suite"
  -DKORVANEJSON_LIBJSON=system "-Dlibjson_ROOT=${WORK}/libjson" "-DCMAKE_FIND_ROOT_PATH=${WORK}"
  # What is tested is what compiles and is linked, so nothing is made faster.
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0)
# The build date distinguishes the library from the one that the programs were built with.
set(ENV{SOURCE_DATE_EPOCH} 0)
configure("${WORK}/build" ${options})
run(${CMAKE_COMMAND} --build "${WORK}/build")

# Without a suite the reason is told, and so it is for parts that need the embedded object model.
function(expect_refusal what)
  execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}/refused" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" -DKORVANEJSON_PLATFORM=suite ${ARGN}
    RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  string(FIND "${errors}" "${what}" position)
  if(status EQUAL 0 OR position EQUAL -1)
    message(FATAL_ERROR "Not refused with \"${what}\": ${errors}")
  endif()
  file(REMOVE_RECURSE "${WORK}/refused")
endfunction()
if(NOT TOOLCHAIN)
  expect_refusal("Set KORVANEJSON_SUITE_ROOT to the folder with the suite's include and lib folders")
  expect_refusal("KORVANEJSON_BUILD_PROGRAM needs the embedded object model"
    "-DKORVANEJSON_SUITE_ROOT=${WORK}/suite" -DKORVANEJSON_BUILD_PROGRAM=ON)
  expect_refusal("KORVANEJSON_LIBJSON is \"other\"" -DKORVANEJSON_LIBJSON=other)
endif()

# All that a program loads, in one folder.
file(MAKE_DIRECTORY "${WORK}/bin")
file(GLOB libraries
  "${WORK}/build/bin/*KorvaneJson.*" "${WORK}/build/bin/*KorvaneExchange.*" "${WORK}/suite/lib/*.so*" "${WORK}/suite/bin/*" "${WORK}/libjson/lib/*.so*"
  "${WORK}/libjson/bin/*")
file(COPY ${libraries} ${RUNTIME} DESTINATION "${WORK}/bin")
set(library "${WORK}/bin/libKorvaneJson.so")
if(WINDOWS)
  set(library "${WORK}/bin/KorvaneJson.dll")
  file(COPY ${PROGRAMS} DESTINATION "${WORK}/bin")
endif()

run(${CMAKE_COMMAND} "-DLIBRARY=${library}" "-DEXPECTED=${EXPECTED}" "-DNM=${NM}" "-DOBJDUMP=${OBJDUMP}"
  "-DWINDOWS=${WINDOWS}" -P "${EXPORTS_SCRIPT}")

list(LENGTH PROGRAMS count)
if(count LESS 2)
  message(FATAL_ERROR "Only these programs came along: ${PROGRAMS}")
endif()
set(ENV{LD_LIBRARY_PATH} "${WORK}/bin")
foreach(program IN LISTS PROGRAMS)
  get_filename_component(name "${program}" NAME)
  if(WINDOWS)
    set(program "${WORK}/bin/${name}")
  else()
    run(ldd "${program}")
    if(output MATCHES "libKorvaneJson[^\n]* => " AND NOT output MATCHES "libKorvaneJson[^\n]* => ${WORK}/bin/")
      message(FATAL_ERROR "${name} would run with another library:\n${output}")
    endif()
  endif()
  run(${EMULATOR} "${program}")
  if(name MATCHES "^module-host" AND NOT output MATCHES " \\(Jan  1 1970 at 00:00:00\\)")
    message(FATAL_ERROR "${name} runs with another library:\n${output}")
  elseif(name MATCHES "^test" AND NOT output MATCHES "\\[  PASSED  \\] [1-9]")
    message(FATAL_ERROR "${name} ran no tests:\n${output}")
  endif()
endforeach()

# What is installed finds the suite again, and a project outside of this tree builds against both.
run(${CMAKE_COMMAND} --install "${WORK}/build" --prefix "${WORK}/prefix")
file(WRITE "${WORK}/outside/CMakeLists.txt" [[
cmake_minimum_required(VERSION 3.25)
project(outside LANGUAGES CXX)
find_package(KorvaneJson REQUIRED)
add_executable(outside main.cpp)
target_link_libraries(outside PRIVATE KorvaneJson::KorvaneJson KorvaneJson::Exchange)
target_compile_features(outside PRIVATE cxx_std_20)
]])
file(WRITE "${WORK}/outside/main.cpp" [[
#include <korvaneexchange/ParseDocument.h>
#include <korvanejson/JsonSerializer.h>
int main() {
    const JSONNode document = JsonSerializer(nullptr).GetJson();
    const json_string text = document.write();
    return document.size() == 1 && korvane::exchange::ParseDocument({text.data(), text.size()}) == document ? 0 : 1;
}
]])
set(SOURCE "${WORK}/outside")
configure("${WORK}/outside/build" "-DCMAKE_PREFIX_PATH=${WORK}/prefix" "-DKORVANEJSON_SUITE_ROOT=${WORK}/suite"
  "-Dlibjson_ROOT=${WORK}/libjson" "-DCMAKE_FIND_ROOT_PATH=${WORK}"
  "-DCMAKE_RUNTIME_OUTPUT_DIRECTORY=${WORK}/bin")
run(${CMAKE_COMMAND} --build "${WORK}/outside/build")
if(WINDOWS)
  run(${EMULATOR} "${WORK}/bin/outside.exe")
else()
  run("${WORK}/bin/outside")
endif()
