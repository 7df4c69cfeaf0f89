# Read by cpack after it has copied the files of the packages for Debian. Programs and libraries that come from another
# build tree still have the path to that tree's libraries. It is removed: they find their libraries without it.

file(GLOB_RECURSE binaries LIST_DIRECTORIES false
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/*" "${CPACK_TEMPORARY_DIRECTORY}/*/usr/lib/*.so.*")
foreach(binary IN LISTS binaries)
  if(NOT IS_SYMLINK "${binary}")
    file(RPATH_REMOVE FILE "${binary}")
  endif()
endforeach()
