# Most of a build's time goes to headers that many sources include. Where a preset asks for it they are read once for
# several sources: those of tests are compiled as one, and so are those of a folder of the program, and the product's under
# the sanitizers; the program has its headers precompiled, too. The product as it is delivered is compiled a source at a time, and everything is in a long run, so
# that a header which a source forgets is noticed.

set(KORVANEJSON_QUICK_BUILD "" CACHE STRING "What is built quicker: tests (and the program), all (and the libraries)")
set_property(CACHE KORVANEJSON_QUICK_BUILD PROPERTY STRINGS "" tests all)

# korvanejson_unity_build(<tests|all>): several sources are compiled as one from here on in this folder, and below it, if
# that is asked for.
macro(korvanejson_unity_build what)
  if(KORVANEJSON_QUICK_BUILD STREQUAL "all" OR KORVANEJSON_QUICK_BUILD STREQUAL "${what}")
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
  endif()
endmacro()

# korvanejson_unity_groups(<target> <folders>...): sources of each folder are compiled as one, a few at a time, but for those
# that have the property SKIP_UNITY_BUILD_INCLUSION.
function(korvanejson_unity_groups target)
  if(NOT KORVANEJSON_QUICK_BUILD)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  foreach(folder IN LISTS ARGN)
    set(own ${sources})
    list(FILTER own INCLUDE REGEX "^${folder}/")
    set(count 0)
    foreach(source IN LISTS own)
      get_source_file_property(isAlone "${source}" SKIP_UNITY_BUILD_INCLUSION)
      if(NOT isAlone)
        math(EXPR group "${count} / 12")
        math(EXPR count "${count} + 1")
        set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${folder}${group}")
      endif()
    endforeach()
  endforeach()
endfunction()

# korvanejson_precompile(<target> <headers>...): headers that most of the target's sources include.
function(korvanejson_precompile target)
  if(NOT KORVANEJSON_QUICK_BUILD)
    return()
  endif()
  target_precompile_headers(${target} PRIVATE ${ARGN})
  # With these options ccache can keep what is compiled with precompiled headers (its sloppiness is set in ./dev).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # From precompiled headers of the system come warnings that others are spared: they are wrong about std::string.
    target_compile_options(${target} PRIVATE -fpch-preprocess -Wno-array-bounds -Wno-stringop-overread
      -Wno-stringop-overflow)
  endif()
endfunction()
