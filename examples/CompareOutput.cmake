# Runs PROGRAM with ARGUMENT and fails unless it prints what stands in the file EXPECTED. What gzip
# and zlib come to is left out of that, since it differs between the versions of zlib.
execute_process(COMMAND ${PROGRAM} ${ARGUMENT} OUTPUT_VARIABLE output RESULT_VARIABLE code)
file(READ ${EXPECTED} expected)
if(NOT code EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${code}")
endif()
foreach(text output expected)
  string(REGEX REPLACE "(gzip|zlib)( +[0-9]+)+" "\\1" ${text} "${${text}}")
endforeach()
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} printed\n${output}\ninstead of\n${expected}")
endif()
