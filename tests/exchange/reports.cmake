# Lets the tests save their reports and checks these against the schema.
file(REMOVE_RECURSE "${REPORTS}")
set(ENV{KORVANEJSON_REPORTS} "${REPORTS}")
execute_process(COMMAND "${PROGRAM}" --gtest_filter=ReportJsonTest.* --gtest_brief=1 COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CHECK} --documents "${REPORTS}" COMMAND_ERROR_IS_FATAL ANY)
