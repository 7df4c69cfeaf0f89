# Read by cpack when the packages for Debian are laid out. Programs and libraries that another build tree built still look
# for libraries where that one has them. The system's are found without that, and nothing else should be.

file(GLOB_RECURSE binaries LIST_DIRECTORIES false
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/*" "${CPACK_TEMPORARY_DIRECTORY}/*/usr/lib/*.so.*")
foreach(binary IN LISTS binaries)
  if(NOT IS_SYMLINK "${binary}")
    file(RPATH_REMOVE FILE "${binary}")
  endif()
endforeach()
