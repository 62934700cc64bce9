# Runs PROGRAM with ARGUMENT and fails unless it prints what stands in the file EXPECTED.
execute_process(COMMAND ${PROGRAM} ${ARGUMENT} OUTPUT_VARIABLE output RESULT_VARIABLE code)
file(READ ${EXPECTED} expected)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${code}")
endif()
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} printed\n${output}\ninstead of\n${expected}")
endif()
