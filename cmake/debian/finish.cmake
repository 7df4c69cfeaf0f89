# Read by cpack after it has made the packages for Debian: adds what its generator cannot.

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree "${package}.tree")
  run(dpkg-deb --raw-extract "${package}" "${tree}")

  # The generator adds scripts that call ldconfig. The trigger calls it once for all packages.
  file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")

  # Files in the folders of an architecture can be installed for several architectures side by side.
  if(NOT EXISTS "${tree}/usr/bin")
    file(READ "${tree}/DEBIAN/control" control)
    string(STRIP "${control}" control)
    file(WRITE "${tree}/DEBIAN/control" "${control}\nMulti-Arch: same\n")
  endif()

  run(dpkg-deb --root-owner-group --build "${tree}" "${package}")
  file(REMOVE_RECURSE "${tree}")
endforeach()
