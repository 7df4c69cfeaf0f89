# Read by cpack after it has copied the files of a package: makes the folders readable for everybody, whatever the umask
# of the user who makes the package.
file(GLOB_RECURSE folders LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(folder IN LISTS folders ITEMS "${CPACK_TEMPORARY_DIRECTORY}")
  if(IS_DIRECTORY "${folder}")
    file(CHMOD "${folder}" PERMISSIONS
      OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
