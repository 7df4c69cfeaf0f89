# Lays out a libjson whose texts are not std::string, builds the product against it and runs the product's tests.

cmake_minimum_required(VERSION 3.25)

include("${CMAKE_CURRENT_LIST_DIR}/Building.cmake")

# What is tested is the text's type, so nothing is made faster.
set(quick -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DKORVANEJSON_BUILD_PROGRAM=OFF)

file(REMOVE_RECURSE "${WORK}/installed" "${WORK}/libjson" "${WORK}/build/documents")
configure("${WORK}/libjson-build" ${quick} -DKORVANEJSON_BUILD_TESTS=OFF -DLIBJSON_OWN_STRING_ALLOCATOR=ON)
run(${CMAKE_COMMAND} --build "${WORK}/libjson-build" --target libjson)
run(${CMAKE_COMMAND} --install "${WORK}/libjson-build/platform/libjson" --prefix "${WORK}/installed")
lay_out_libjson("${WORK}/installed" "${WORK}/libjson")
# An installed libjson knows how it was built.
file(READ "${WORK}/libjson/include/libjson.h" header)
string(REPLACE "#pragma once" "#pragma once\n#define LIBJSON_OWN_STRING_ALLOCATOR" header "${header}")
file(WRITE "${WORK}/libjson/include/libjson.h" "${header}")

configure("${WORK}/build" ${quick} -DKORVANEJSON_BUILD_TESTS=ON -DKORVANEJSON_PRECOMPILE=tests
  -DKORVANEJSON_LIBJSON=system "-Dlibjson_ROOT=${WORK}/libjson")
# KorvaneExchange is built; its tests, which are as many as all the others, say the same as with the strange suite.
set(programs test-objectjson test-rest test-serializer test-serializer-mode test-module test-module-inside
  test-module-loading module-host)
if(DEFINED ENV{KORVANEJSON_LONG})
  list(APPEND programs test-exchange)
endif()
run(${CMAKE_COMMAND} --build "${WORK}/build" --target ${programs} KorvaneExchange)

execute_process(COMMAND nm --dynamic --demangle "${WORK}/build/bin/libKorvaneJson.so" OUTPUT_VARIABLE symbols
  COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "libjson::string_allocator<char>")
  message(FATAL_ERROR "The library was built with another libjson:\n${symbols}")
endif()

list(FILTER programs INCLUDE REGEX "^test")
list(TRANSFORM programs PREPEND "${WORK}/build/bin/")
run_tests(${programs})
