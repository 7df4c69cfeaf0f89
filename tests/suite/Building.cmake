# What the scripts of this folder share.

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

# Configures the source in a build tree with the given options, with the compiler and the build data of the tree that
# is tested.
function(configure tree)
  set(options "-DCMAKE_CXX_COMPILER=${COMPILER}"
    "-DKORVANEJSON_WEB_ADDRESS=${WEB_ADDRESS}"
    "-DKORVANEJSON_BUILD_HOST_NAME=${HOST_NAME}"
    "-DKORVANEJSON_BUILD_RUNNER_NAME=${RUNNER_NAME}"
    "-DKORVANEJSON_MAKER_PREFIX=${MAKER_PREFIX}"
    "-DKORVANEJSON_RIGHTS_NOTICE=${RIGHTS_NOTICE}")
  if(NOT DEFINED ENV{KORVANEJSON_LONG})
    list(APPEND options -DKORVANEJSON_QUICK_BUILD=all)
  endif()
  if(LAUNCHER)
    list(APPEND options "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
  endif()
  if(TOOLCHAIN)
    list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
  endif()
  run(${CMAKE_COMMAND} -S "${SOURCE}" -B "${tree}" -G "${GENERATOR}" ${options} ${ARGN})
endfunction()

# Lays out libjson as an installed one: its header in include/, its libraries in lib/ and bin/, from an installed tree.
function(lay_out_libjson installed folder)
  file(COPY "${installed}/include/libjson/libjson.h" DESTINATION "${folder}/include")
  lay_out_libraries("${installed}" "${folder}" libjson)
endfunction()

# Builds a libjson whose texts are not std::string and lays it out as an installed one, which knows how it was built.
function(lay_out_libjson_with_own_texts folder)
  configure("${WORK}/libjson-build" ${ARGN} -DKORVANEJSON_BUILD_TESTS=OFF -DKORVANEJSON_BUILD_PROGRAM=OFF
    -DLIBJSON_OWN_STRING_ALLOCATOR=ON)
  run(${CMAKE_COMMAND} --build "${WORK}/libjson-build" --target libjson)
  run(${CMAKE_COMMAND} --install "${WORK}/libjson-build/platform/libjson" --prefix "${WORK}/installed")
  lay_out_libjson("${WORK}/installed" "${folder}")
  file(REMOVE_RECURSE "${WORK}/installed")
  file(READ "${folder}/include/libjson.h" header)
  string(REPLACE "#pragma once" "#pragma once\n#define LIBJSON_OWN_STRING_ALLOCATOR" header "${header}")
  file(WRITE "${folder}/include/libjson.h" "${header}")
endfunction()

# Fails if a library was not built with such a libjson.
function(expect_own_texts library)
  execute_process(COMMAND nm --dynamic --demangle "${library}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  if(NOT symbols MATCHES "libjson::string_allocator<char>")
    message(FATAL_ERROR "The library was built with another libjson:\n${symbols}")
  endif()
endfunction()

# Libraries and import libraries come to lib/, the libraries of Windows to bin/.
function(lay_out_libraries installed folder)
  foreach(library IN LISTS ARGN)
    file(GLOB_RECURSE found "${installed}/${library}.*" "${installed}/lib${library}.*")
    list(FILTER found INCLUDE REGEX "\\.(so|a|lib|dll)(\\.[0-9.]+)?$")
    if(NOT found)
      message(FATAL_ERROR "${installed} has no library ${library}")
    endif()
    foreach(file IN LISTS found)
      if(file MATCHES "\\.dll$")
        file(COPY "${file}" DESTINATION "${folder}/bin")
      else()
        file(COPY "${file}" DESTINATION "${folder}/lib")
      endif()
    endforeach()
  endforeach()
endfunction()

# Runs programs of tests, each of which has to pass at least one. What takes minutes when nothing was made faster, depth,
# size and comparisons of thousands of documents, does not depend on what a suite looks like, and is left to a long run.
function(run_tests)
  if(NOT DEFINED ENV{KORVANEJSON_LONG})
    set(depth "*Depth*:*Deep*:*Levels*")
    set(size "*Million*:*Thousand*:*Megabytes*:*Scale*:*Large*:*Limit*:*GrowAs*:*InProportion*")
    set(ENV{GTEST_FILTER} "-${depth}:${size}:CompareMutations.*")
  endif()
  set(total 0)
  foreach(program IN LISTS ARGN)
    run(${EMULATOR} "${program}")
    if(NOT output MATCHES "\\[  PASSED  \\] ([1-9][0-9]*) test")
      message(FATAL_ERROR "${program} ran no tests:\n${output}")
    endif()
    math(EXPR total "${total} + ${CMAKE_MATCH_1}")
  endforeach()
  if(total EQUAL 0)
    message(FATAL_ERROR "There is no program of tests")
  endif()
  message("${total} tests passed")
endfunction()
