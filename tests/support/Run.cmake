# For the tests that are CMake scripts.

# Runs a command, which must succeed; what it writes is in `output`, without blanks around it.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN} ended with ${status}\n${output}\n${errors}")
  endif()
  string(STRIP "${output}" output)
  set(output "${output}" PARENT_SCOPE)
endfunction()
