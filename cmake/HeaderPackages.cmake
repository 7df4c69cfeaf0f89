# Header-only packages from the distribution.

# A header-only package for every compiler: korvanejson_header_package(<target> <folder> <header>)
# Only that folder is linked into the build tree, so that a cross compiler never sees all of /usr/include.
function(korvanejson_header_package target folder header)
  find_path(${target}_ROOT "${folder}/${header}" PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(headers "${${target}_ROOT}")
  # On Windows only administrators can make links, and there is no such folder that a compiler must not see.
  if(NOT CMAKE_HOST_WIN32)
    set(headers "${PROJECT_BINARY_DIR}/header-packages/${target}")
    file(MAKE_DIRECTORY "${headers}")
    file(CREATE_LINK "${${target}_ROOT}/${folder}" "${headers}/${folder}" SYMBOLIC)
  endif()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE "${headers}")
endfunction()
