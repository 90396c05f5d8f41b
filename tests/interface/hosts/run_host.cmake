# Runs HOST with ARGUMENT in FOLDER and compares what it prints with the file EXPECTED.
set(installed /usr/tavr/lib/libzekrsparser.so.0)
if(EXISTS ${installed})
  message(FATAL_ERROR "${installed} would serve the host; this case needs a machine on which it is not installed")
endif()
execute_process(COMMAND ${HOST} ${ARGUMENT} WORKING_DIRECTORY ${FOLDER}
                RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE errors)
file(READ ${EXPECTED} expected)
if(NOT result EQUAL 0 OR NOT errors STREQUAL "" OR NOT printed STREQUAL expected)
  message(FATAL_ERROR "${HOST} ended with ${result}.\n--- expected\n${expected}--- printed\n${printed}--- errors\n${errors}")
endif()
