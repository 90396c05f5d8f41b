# The include check fails on the tree beside this file, which breaks each rule once, and names exactly these includes.
set(tree ${CMAKE_CURRENT_LIST_DIR}/bad_rooms)
execute_process(COMMAND ${CMAKE_COMMAND} -D ROOT=${tree} -P ${CMAKE_CURRENT_LIST_DIR}/../../cmake/check_includes.cmake
  RESULT_VARIABLE result ERROR_VARIABLE found)
if(result EQUAL 0)
  message(FATAL_ERROR "the check passes")
endif()
string(REGEX REPLACE "CMake Error.*" "" found "${found}")
file(READ ${tree}/expected.txt expected)
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "expected:\n${expected}\nfound:\n${found}")
endif()
