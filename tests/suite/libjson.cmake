# Builds the product against a libjson whose texts are not std::string and the embedded object model, and runs the
# product's tests.

cmake_minimum_required(VERSION 3.25)

include("${CMAKE_CURRENT_LIST_DIR}/Building.cmake")

# What is tested is the text's type, so nothing is made faster.
set(quick -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DKORVANEJSON_BUILD_PROGRAM=OFF)

file(REMOVE_RECURSE "${WORK}/libjson" "${WORK}/build/documents")
lay_out_libjson_with_own_texts("${WORK}/libjson" ${quick})

configure("${WORK}/build" ${quick} -DKORVANEJSON_BUILD_TESTS=ON
  -DKORVANEJSON_LIBJSON=system "-Dlibjson_ROOT=${WORK}/libjson")
set(programs test-objectjson test-rest test-serializer test-serializer-mode test-module test-module-inside
  test-module-loading module-host test-exchange)
run(${CMAKE_COMMAND} --build "${WORK}/build" --target ${programs})
expect_own_texts("${WORK}/build/bin/libKorvaneJson.so")
expect_own_texts("${WORK}/build/bin/libKorvaneExchange.so")

list(FILTER programs INCLUDE REGEX "^test")
list(TRANSFORM programs PREPEND "${WORK}/build/bin/")
run_tests(${programs})
