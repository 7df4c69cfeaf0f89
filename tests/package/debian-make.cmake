# Makes the packages for Debian in WORK/packages, of what the build tree BUILD has built: a second tree is configured for
# the system's own folders and installs the same programs and libraries, so that nothing is compiled twice.

cmake_minimum_required(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(REMOVE_RECURSE "${WORK}")
run(${CMAKE_COMMAND} -S "${SOURCE}" -B "${WORK}/tree" -G "${GENERATOR}"
  "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_BUILD_TYPE=${CONFIG}"
  -DCMAKE_INSTALL_PREFIX=/usr "-DKORVANEJSON_OUTPUT_DIRECTORY=${BUILD}" -DKORVANEJSON_BUILD_TESTS=OFF)
# The packages must not depend on the umask: here nobody else can read new files.
run(sh -c [[umask 077 && exec "$0" "$@"]] ${CPACK} --config "${WORK}/tree/CPackConfig.cmake" -C "${CONFIG}" -B "${WORK}/packages")
