# Runs one script through the program and compares the transcript with the
# expected one. Arguments: PROGRAM, DRAWING (empty for a new drawing), SCRIPT,
# EXPECTED, ACTUAL (where to keep the transcript when it differs).
execute_process(
  COMMAND ${PROGRAM} ${DRAWING} -s ${SCRIPT}
  OUTPUT_VARIABLE transcript
  ERROR_VARIABLE errors
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "zarvel exited with ${status}\n${errors}\n${transcript}")
endif()
if(NOT errors STREQUAL "")
  message(FATAL_ERROR "zarvel wrote to standard error:\n${errors}")
endif()
file(READ ${EXPECTED} expected)
if(NOT transcript STREQUAL expected)
  file(WRITE ${ACTUAL} "${transcript}")
  execute_process(COMMAND diff -u ${EXPECTED} ${ACTUAL} OUTPUT_VARIABLE difference)
  message(FATAL_ERROR "Transcript differs from ${EXPECTED}:\n${difference}")
endif()
