# Makes a package of the kind PACKAGE of the build tree in WORK and unpacks it: PREFIX is the folder with bin, lib and include.

set(cpack ${CPACK})
if(PACKAGE STREQUAL TGZ)
  # With a umask by which nobody else can read new files.
  set(cpack sh -c [[umask 077 && exec "$0" "$@"]] ${CPACK})
endif()
run(${cpack} --config "${BUILD}/CPackConfig.cmake" -C "${CONFIG}" -G ${PACKAGE} -B "${WORK}/package")
file(GLOB package "${WORK}/package/*.zip" "${WORK}/package/*.tar.gz")
list(LENGTH package count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "cpack made ${count} packages instead of one: ${package}")
endif()
get_filename_component(file_name "${package}" NAME)
set(expected_name ${PACKAGE_NAME}.tar.gz)
if(PACKAGE STREQUAL ZIP)
  set(expected_name ${PACKAGE_NAME}.zip)
endif()
if(NOT file_name STREQUAL expected_name)
  message(FATAL_ERROR "The package is called ${file_name} instead of ${expected_name}")
endif()

file(MAKE_DIRECTORY "${WORK}/unpacked")
# In a locale in which the names of the examples can be told.
run(${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8
  ${CMAKE_COMMAND} -E chdir "${WORK}/unpacked" ${CMAKE_COMMAND} -E tar xf "${package}")
set(PREFIX "${WORK}/unpacked/${PACKAGE_NAME}")
if(PACKAGE STREQUAL TGZ)
  run(find "${PREFIX}" -not -type l -not -perm -444)
  if(output)
    message(SEND_ERROR "Only their owner can read these:\n${output}")
  endif()
endif()
