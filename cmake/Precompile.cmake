# Headers that nearly every file includes are read once for all files of a target, where a preset asks for that: it takes
# a third off the time of a build. The product is always built without, and so is the program for Windows, so that a header
# that a file forgets is noticed.

set(KORVANEJSON_PRECOMPILE "" CACHE STRING "What is built with precompiled headers: tests, all (tests and program)")
set_property(CACHE KORVANEJSON_PRECOMPILE PROPERTY STRINGS "" tests all)

set(_korvanejson_usual_headers <algorithm> <array> <chrono> <cstdint> <cstring> <filesystem> <functional> <map> <memory>
  <optional> <ranges> <set> <sstream> <string> <string_view> <unordered_map> <unordered_set> <utility> <variant> <vector>)

# With these options ccache can keep what is compiled with precompiled headers (its sloppiness is set in ./dev).
function(_korvanejson_keep_in_cache target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # From precompiled headers of the system come warnings that others are spared: they are wrong about std::string.
    target_compile_options(${target} PRIVATE -fpch-preprocess -Wno-array-bounds -Wno-stringop-overread
      -Wno-stringop-overflow)
  endif()
endfunction()

# korvanejson_precompile(<target> <headers>...): the usual headers and these.
function(korvanejson_precompile target)
  target_precompile_headers(${target} PRIVATE ${_korvanejson_usual_headers} ${ARGN})
  _korvanejson_keep_in_cache(${target})
endfunction()

# korvanejson_precompiled_as(<target> <other>): those of another target, which has the same options.
function(korvanejson_precompiled_as target other)
  target_precompile_headers(${target} REUSE_FROM ${other})
  _korvanejson_keep_in_cache(${target})
endfunction()
