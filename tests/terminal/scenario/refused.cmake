# Runs a scenario that must not succeed; checks its exit code and that its message is on the error stream.
execute_process(COMMAND "${PROGRAM}" --scenario "${SCENARIO}" RESULT_VARIABLE code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT code STREQUAL CODE)
    message(FATAL_ERROR "exit code ${code} instead of ${CODE}\n${output}${errors}")
endif()
string(FIND "${errors}" "${MESSAGE}" found)
if(found EQUAL -1)
    message(FATAL_ERROR "no «${MESSAGE}» in:\n${errors}")
endif()
