# Writes the script by which SHELL completes the arguments of PROGRAM to the file SCRIPT.
execute_process(COMMAND "${PROGRAM}" completion ${SHELL} OUTPUT_VARIABLE script COMMAND_ERROR_IS_FATAL ANY)
file(WRITE "${SCRIPT}" "${script}")
