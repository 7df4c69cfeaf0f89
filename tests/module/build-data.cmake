# Runs SCRIPT, which writes the build data from TEMPLATE, in the folder WORK and reads what comes out; GIT is the program.
# BUILT is what the build of SOURCE made with it.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/plain" "${WORK}/checkout/inner")

function(git)
  execute_process(COMMAND "${GIT}" -c user.name=tester -c user.email=tester@korvane.example ${ARGN}
    WORKING_DIRECTORY "${WORK}/checkout" OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# run(<source folder> [NAME=value..]): the header's text in `header`, the status and the errors.
function(run source)
  set(values MAKER_PREFIX=Xyz WEB_ADDRESS=https://maker.example BUILD_HOST_NAME=machine BUILD_RUNNER=fifteen-letters
    "RIGHTS_NOTICE=Copyright 2031 Some Body & Sons" ${ARGN})
  list(TRANSFORM values PREPEND -D)
  execute_process(COMMAND ${CMAKE_COMMAND} "-DTEMPLATE=${TEMPLATE}" "-DOUTPUT=${WORK}/BuildData.h"
    "-DSOURCE=${source}" "-DGIT=${GIT}" -DVERSION=3.4.5 ${values} -P "${SCRIPT}"
    RESULT_VARIABLE status ERROR_VARIABLE errors)
  set(header "")
  if(EXISTS "${WORK}/BuildData.h")
    file(READ "${WORK}/BuildData.h" header)
  endif()
  set(header "${header}" PARENT_SCOPE)
  set(status "${status}" PARENT_SCOPE)
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(expect what)
  string(FIND "${header}" "#define ${what}\n" position)
  if(NOT status EQUAL 0 OR position EQUAL -1)
    message(SEND_ERROR "The build data lack \"${what}\" (${status}, ${errors}):\n${header}")
  endif()
endfunction()

function(expect_failure what)
  string(REGEX REPLACE "[ \n]+" " " said "${errors}")
  string(FIND "${said}" "${what}" position)
  if(status EQUAL 0 OR position EQUAL -1)
    message(SEND_ERROR "Not stopped with \"${what}\" (${status}):\n${errors}")
  endif()
endfunction()

# A folder that is not a checkout can still be inside one: the folder of this build.
string(REPEAT 0 40 zeros)
run("${WORK}/plain")
expect("KORVANEJSON_REVISION \"${zeros}\"")
expect("KORVANEJSON_VERSION \"3.4.5.00000000000\"")
expect("KORVANEJSON_MAKER_PREFIX \"Xyz\"")
expect("KORVANEJSON_WEB_ADDRESS \"https://maker.example\"")
expect("KORVANEJSON_BUILD_HOST_NAME \"machine\"")
expect("KORVANEJSON_BUILD_RUNNER \"fifteen-letters\"")
expect("KORVANEJSON_RIGHTS_NOTICE \"Copyright 2031 Some Body & Sons\"")
expect("KORVANEJSON_RIGHTS_NOTICE_REST \" 2031 Some Body & Sons\"")
expect("KORVANEJSON_BUILD_DATE __DATE__")
expect("KORVANEJSON_BUILD_TIME __TIME__")
run("${WORK}/plain" GIT=)
expect("KORVANEJSON_REVISION \"${zeros}\"")

git(init --quiet)
git(commit --quiet --allow-empty --message=first)
git(rev-parse HEAD)
string(SUBSTRING "${output}" 0 11 start)
run("${WORK}/checkout")
expect("KORVANEJSON_REVISION \"${output}\"")
expect("KORVANEJSON_VERSION \"3.4.5.${start}\"")
run("${WORK}/checkout/inner")
expect("KORVANEJSON_REVISION \"${zeros}\"")

# The moment that the environment gives, in the compiler's form.
set(ENV{SOURCE_DATE_EPOCH} 1772357400)
run("${WORK}/plain")
expect("KORVANEJSON_BUILD_DATE \"Mar  1 2026\"")
expect("KORVANEJSON_BUILD_TIME \"09:30:00\"")
set(ENV{SOURCE_DATE_EPOCH} 1797724805)
run("${WORK}/plain")
expect("KORVANEJSON_BUILD_DATE \"Dec 20 2026\"")
expect("KORVANEJSON_BUILD_TIME \"00:00:05\"")
unset(ENV{SOURCE_DATE_EPOCH})

# Nothing is compiled again because of a header that says the same.
run("${WORK}/plain")
execute_process(COMMAND touch -d 2026-01-01T00:00:00Z "${WORK}/BuildData.h" COMMAND_ERROR_IS_FATAL ANY)
run("${WORK}/plain")
file(TIMESTAMP "${WORK}/BuildData.h" time "%Y-%m-%d" UTC)
if(NOT time STREQUAL "2026-01-01")
  message(SEND_ERROR "The header was written again (${time})")
endif()

run("${WORK}/plain" BUILD_RUNNER=sixteen--letters)
expect_failure("The build runner's name (KORVANEJSON_BUILD_RUNNER_NAME) must have 15 characters, and \"sixteen--letters\" has 16")
run("${WORK}/plain" "RIGHTS_NOTICE=Copyright 2026")
expect_failure("The rights notice (KORVANEJSON_RIGHTS_NOTICE) must have 31 characters")
run("${WORK}/plain" "RIGHTS_NOTICE=(C) 2026 Korvane Software Group")
expect_failure("from its first blank on must have 22 characters")
run("${WORK}/plain" MAKER_PREFIX=Four)
expect_failure("must have 3 characters")
run("${WORK}/plain" BUILD_HOST_NAME=)
expect_failure("printable ASCII")
foreach(address "https://\"maker\"" "https:\\\\maker" "https://mäker")
  run("${WORK}/plain" "WEB_ADDRESS=${address}")
  expect_failure("printable ASCII")
endforeach()

# The build asks for the revision of its own sources. It may be older than they are by now.
run("${SOURCE}")
file(READ "${BUILT}" built)
if(NOT built MATCHES "#define KORVANEJSON_REVISION \"([0-9a-f]+)\"\n")
  message(SEND_ERROR "The build has no revision:\n${built}")
endif()
set(built_revision "${CMAKE_MATCH_1}")
string(REGEX MATCH "#define KORVANEJSON_REVISION \"${zeros}\"" outside "${header}")
if(outside AND NOT built_revision STREQUAL zeros OR NOT outside AND built_revision STREQUAL zeros)
  message(SEND_ERROR "The build states the revision ${built_revision}, its sources\n${header}")
endif()
