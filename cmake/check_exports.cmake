# Compares the names that LIBRARY exports, as NM lists them, with the global names of the version script EXPORT_LIST.
file(READ ${EXPORT_LIST} script)
string(REGEX REPLACE "/\\*[^*]*\\*/" "" script "${script}")
if(NOT script MATCHES "global:([^:]*)local:")
    message(FATAL_ERROR "no list of global names in ${EXPORT_LIST}")
endif()
string(REGEX MATCHALL "[A-Za-z_0-9]+" listed "${CMAKE_MATCH_1}")

execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" rows "${table}")
set(exported)
foreach(row IN LISTS rows)
    string(REGEX REPLACE " .*" "" name "${row}")
    list(APPEND exported ${name})
endforeach()

list(SORT listed)
list(SORT exported)
if(NOT listed STREQUAL exported)
    message(FATAL_ERROR "listed:   ${listed}\nexported: ${exported}")
endif()
