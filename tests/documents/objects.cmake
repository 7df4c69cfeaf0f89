# The lists of objects that PROGRAM writes of the directory PROJECT, of its project file and of its document are what
# CHECK takes for valid.

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/lists")

function(run)
  execute_process(COMMAND "${PROGRAM}" ${ARGN} WORKING_DIRECTORY "${WORK}"
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}\nended with ${status}:\n${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run(new "${PROJECT}" project.kvp)
run(export "${PROJECT}" -o document.json)
run(store document.json --db server.db -o answer.json)
run(apply answer.json project.kvp)
set(number 0)
foreach(input IN ITEMS "${PROJECT}" project.kvp document.json)
  foreach(condition IN ITEMS "" kind=Part has=mesh name=nothing)
    math(EXPR number "${number} + 1")
    run(find "${input}" ${condition} --format json)
    file(WRITE "${WORK}/lists/${number}.json" "${output}")
  endforeach()
  run(tree "${input}" --format json)
  file(WRITE "${WORK}/lists/tree${number}.json" "${output}")
endforeach()

execute_process(COMMAND ${CHECK} --documents "${WORK}/lists" RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "A list is not valid")
endif()
