# Builds the product against the strange suite (strange/make-suite) and a libjson whose texts are not std::string, with
# nothing of it replaced but objectjson/ObjectModel.h, and runs the product's own tests with what comes out.

cmake_minimum_required(VERSION 3.25)

include("${CMAKE_CURRENT_LIST_DIR}/Building.cmake")

# What is tested is what compiles and what comes out, so nothing is made faster.
set(quick -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0)
set(strange "${CMAKE_CURRENT_LIST_DIR}/strange")
set(tree "${WORK}/tree")
# The build date distinguishes the library from others.
set(ENV{SOURCE_DATE_EPOCH} 0)

lay_out_libjson_with_own_texts("${WORK}/libjson" ${quick})

# The product as it is, but for the one file. Files keep their times, so that a second run builds what has changed.
file(GLOB product RELATIVE "${SOURCE}" "${SOURCE}/*")
list(FILTER product EXCLUDE REGEX "^(\\..*|build.*|bench|fuzz|host|platform|tests)$")
list(TRANSFORM product PREPEND "${tree}/" OUTPUT_VARIABLE copies)
file(REMOVE_RECURSE ${copies} "${WORK}/suite")
list(TRANSFORM product PREPEND "${SOURCE}/")
file(COPY ${product} DESTINATION "${tree}")
# A copy is left out where there is a file of the same time.
file(REMOVE "${tree}/objectjson/ObjectModel.h")
file(COPY "${strange}/ObjectModel.h" DESTINATION "${tree}/objectjson")

# The suite. The product sees the headers that every suite has, which are those with a new name.
run("${PYTHON}" "${strange}/make-suite" "${SOURCE}" "${tree}")
set(SOURCE "${strange}/suite")
configure("${WORK}/suite-build" ${quick} "-DTREE=${tree}")
run(${CMAKE_COMMAND} --build "${WORK}/suite-build" --target KorvaneRecording orsutl PimuUtil)
file(GLOB headers "${tree}/platform/*/*.hxx")
file(COPY ${headers} DESTINATION "${WORK}/suite/include")
lay_out_libraries("${WORK}/suite-build" "${WORK}/suite" Korvane orsutl PimuUtil)
set(libraries "-DKORVANEJSON_SUITE_ROOT=${WORK}/suite" "-Dlibjson_ROOT=${WORK}/libjson"
  "-DCMAKE_FIND_ROOT_PATH=${WORK}")

set(SOURCE "${tree}")
configure("${WORK}/build" ${quick} -DKORVANEJSON_PLATFORM=suite -DKORVANEJSON_LIBJSON=system ${libraries})
run(${CMAKE_COMMAND} --build "${WORK}/build" --target KorvaneJson KorvaneExchange)
set(library "${WORK}/build/bin/libKorvaneJson.so")
set(exchange "${WORK}/build/bin/libKorvaneExchange.so")
if(WINDOWS)
  set(library "${WORK}/build/bin/KorvaneJson.dll")
  set(exchange "${WORK}/build/bin/KorvaneExchange.dll")
endif()
function(expect_exports library expected)
  run(${CMAKE_COMMAND} "-DLIBRARY=${library}" "-DEXPECTED=${expected}" "-DNM=${NM}" "-DOBJDUMP=${OBJDUMP}"
    "-DWINDOWS=${WINDOWS}" -P "${EXPORTS_SCRIPT}")
endfunction()
expect_exports("${library}" "${EXPECTED}")
expect_exports("${exchange}" "${EXPECTED_OF_EXCHANGE}")
expect_own_texts("${library}")

# It asks for operations that only this suite has, and for none that only the usual one has.
if(WINDOWS)
  run(${OBJDUMP} -p "${library}")
else()
  run(${NM} --dynamic --undefined-only "${library}")
endif()
foreach(name IN ITEMS
    _ZN9CAEObject7getTypeEv _ZN12CAETreePlace16attachCustomFileEiP10CAEProject _ZN12CAEPartFiles10setCADFileEi
    _ZN6OuList4TakeER7OuPlace _ZNK8OuString14AnsiCharactersEv)
  if(NOT output MATCHES "[^A-Za-z0-9_]${name}[^A-Za-z0-9_]")
    message(FATAL_ERROR "The library does not ask for ${name}:\n${output}")
  endif()
endforeach()
foreach(name IN ITEMS
    _ZNK9CAEObject7getTypeEv _ZN9CAEObject16attachCustomFileEiP10CAEProject _ZN7CAEPart10setCADFileEi OuListPosition
    _ZNK8OuString13GetAnsiBufferEv)
  if(output MATCHES "${name}")
    message(FATAL_ERROR "The library asks for ${name}, which the suite does not have")
  endif()
endforeach()

set(SOURCE "${strange}/tests")
configure("${WORK}/tests-build" ${quick} "-DTREE=${tree}" "-DPRODUCT=${WORK}/build" "-DVERSION=${VERSION}" ${libraries})
run(${CMAKE_COMMAND} --build "${WORK}/tests-build")
set(suffix)
if(WINDOWS)
  set(suffix .exe)
  file(GLOB beside "${WORK}/suite/bin/*" "${WORK}/libjson/bin/*")
  file(COPY "${library}" "${exchange}" ${beside} DESTINATION "${WORK}/tests-build/bin")
endif()

run(${EMULATOR} "${WORK}/tests-build/bin/module-host${suffix}")
if(NOT output MATCHES " \\(Jan  1 1970 at 00:00:00\\)")
  message(FATAL_ERROR "The programs run with another library:\n${output}")
endif()
file(GLOB programs "${WORK}/tests-build/bin/test-*${suffix}")
run_tests(${programs})
