# Runs a command in WORK_DIR, which must succeed; what it printed is then in `output`.
function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE result OUTPUT_VARIABLE output
                  ERROR_VARIABLE errors)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\nended with ${result}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()
