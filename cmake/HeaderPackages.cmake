# Header-only packages from the distribution.

# A header-only package for every compiler: korvanejson_header_package(<target> <folder> <header>)
# The one folder is linked into the build tree, so that a cross compiler never sees the whole of /usr/include.
function(korvanejson_header_package target folder header)
  find_path(${target}_ROOT "${folder}/${header}" PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(links "${PROJECT_BINARY_DIR}/header-packages/${target}")
  file(MAKE_DIRECTORY "${links}")
  file(CREATE_LINK "${${target}_ROOT}/${folder}" "${links}/${folder}" SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE "${links}")
endfunction()
