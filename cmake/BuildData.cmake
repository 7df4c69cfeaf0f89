# Writes the header OUTPUT with what the build knows about itself, from TEMPLATE. This runs at every build, and changes
# the header only if its content is different.
# SOURCE is the source folder, GIT the program (may be empty), VERSION the release number; MAKER_PREFIX, WEB_ADDRESS,
# BUILD_HOST_NAME, BUILD_RUNNER and RIGHTS_NOTICE are used as they are. With SOURCE_DATE_EPOCH in the environment the
# build date and time are that moment in UTC, otherwise those of the compiler.

# The module's texts have fixed lengths.
function(expect_length what text length)
  string(LENGTH "${text}" actual)
  if(NOT actual EQUAL length)
    message(FATAL_ERROR "${what} must have ${length} characters, and \"${text}\" has ${actual}")
  endif()
endfunction()
expect_length("The maker's prefix (KORVANEJSON_MAKER_PREFIX)" "${MAKER_PREFIX}" 3)
expect_length("The build runner's name (KORVANEJSON_BUILD_RUNNER_NAME)" "${BUILD_RUNNER}" 15)
expect_length("The rights notice (KORVANEJSON_RIGHTS_NOTICE)" "${RIGHTS_NOTICE}" 31)
foreach(text IN ITEMS "${MAKER_PREFIX}" "${WEB_ADDRESS}" "${BUILD_HOST_NAME}" "${BUILD_RUNNER}" "${RIGHTS_NOTICE}")
  if(NOT text MATCHES "^[ -~]+$" OR text MATCHES "[\"\\\\]")
    message(FATAL_ERROR "Build data are printable ASCII without quotes and backslashes, unlike \"${text}\"")
  endif()
endforeach()
string(FIND "${RIGHTS_NOTICE} " " " first_blank)
string(SUBSTRING "${RIGHTS_NOTICE}" ${first_blank} -1 RIGHTS_NOTICE_REST)
# Two characters replace its first word, and the whole text then has 24.
expect_length("The rights notice (KORVANEJSON_RIGHTS_NOTICE) from its first blank on" "${RIGHTS_NOTICE_REST}" 22)

string(REPEAT "0" 40 REVISION)
if(GIT)
  # Only a checkout of this project counts, not another one in which an archive of it was unpacked.
  execute_process(COMMAND "${GIT}" rev-parse --show-prefix HEAD
    WORKING_DIRECTORY "${SOURCE}" OUTPUT_VARIABLE answer RESULT_VARIABLE status ERROR_QUIET)
  if(status EQUAL 0 AND answer MATCHES "^\n([0-9a-f]+)\n$")
    string(SUBSTRING "${CMAKE_MATCH_1}" 0 40 REVISION)
  endif()
endif()
string(SUBSTRING "${REVISION}" 0 11 REVISION_START)

set(BUILD_DATE __DATE__)
set(BUILD_TIME __TIME__)
if(NOT "$ENV{SOURCE_DATE_EPOCH}" STREQUAL "")
  # CMake's clock reads the variable by itself.
  string(TIMESTAMP BUILD_DATE "\"%b %d %Y\"" UTC)
  string(REPLACE " 0" "  " BUILD_DATE "${BUILD_DATE}")
  string(TIMESTAMP BUILD_TIME "\"%H:%M:%S\"" UTC)
endif()

configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
