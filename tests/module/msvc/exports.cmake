# Compiles the exported headers of SOURCE with CLANG as MSVC would, and compares what they export with the names in
# EXPECTED, one a line. The object comes to OBJECT.

include("${CMAKE_CURRENT_LIST_DIR}/../compare.cmake")

execute_process(
  COMMAND "${CLANG}" --target=x86_64-pc-windows-msvc -fms-compatibility-version=19.38 -std=c++20 -DKORVANEJSON_BUILD
    # The headers of this system are not those of MSVC.
    -nostdinc "-I${CMAKE_CURRENT_LIST_DIR}/include"
    "-I${SOURCE}/include" "-I${SOURCE}/platform/libjson" "-I${SOURCE}/platform/orsutl"
    -c "${CMAKE_CURRENT_LIST_DIR}/Exports.cpp" -o "${OBJECT}"
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${READOBJ}" --coff-directives "${OBJECT}" OUTPUT_VARIABLE directives
  COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "/EXPORT:(\"[^\"]*\"|[^ \",]+)" exported "${directives}")
list(TRANSFORM exported REPLACE "^/EXPORT:" "")
list(TRANSFORM exported REPLACE "\"" "")
compare_exports("${CMAKE_CURRENT_LIST_DIR}/Exports.cpp" "${exported}" "${EXPECTED}")
