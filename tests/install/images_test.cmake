# Builds ten times SHARING boards with zek_add_image of the package in PREFIX, by GENERATOR in WORK_DIR, touches what they
# include, and sees which are built again.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/boards -B ${WORK_DIR} -G ${GENERATOR}
                        -DCMAKE_PREFIX_PATH=${PREFIX} -DSHARING=${SHARING} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)

# Expects that no build can be made of the boards with the package in another prefix and with these options.
function(expect_refused prefix pattern)
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/boards -B ${WORK_DIR}/refused -G ${GENERATOR}
                          -DCMAKE_PREFIX_PATH=${prefix} -DSHARING=1 ${ARGN}
                  OUTPUT_QUIET ERROR_VARIABLE errors RESULT_VARIABLE result)
  file(REMOVE_RECURSE ${WORK_DIR}/refused)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  if(result EQUAL 0 OR NOT errors MATCHES "${pattern}")
    message(FATAL_ERROR "refused should be: ${pattern}\n${errors}")
  endif()
endfunction()

expect_refused(${PREFIX} "zek_add_image.firmware.: EMIT is rust, neither image nor c" -DEMIT=rust)
expect_refused(${PREFIX} "zek_add_image.odd.: the path /odd/bo#ard.zek has a #, which no file of a build by CMake can have"
               "-DODD=/odd/bo#ard.zek")
expect_refused(${PREFIX} "zek_add_image.odd.: the path /odd/bo\;ard.zek has a \;, which no file of a build by CMake can have"
               "-DODD=/odd/bo\;ard.zek")
# Without the command, and with none of the system's, which is looked for once the compiler is found.
file(COPY ${PREFIX}/lib DESTINATION ${WORK_DIR}/libraries)
file(WRITE ${WORK_DIR}/nowhere.cmake
     "set(CMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH OFF)\nset(CMAKE_FIND_USE_CMAKE_SYSTEM_PATH OFF)\n")
expect_refused(${WORK_DIR}/libraries "there is no command zek; install the package zek-tools, or set ZEK_EXECUTABLE"
               -DCMAKE_PROJECT_INCLUDE=${WORK_DIR}/nowhere.cmake)

# Builds with several jobs and expects that just these boards (a pattern) are compiled.
function(expect_built what pattern number)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR} -j 8 ${ARGN} OUTPUT_VARIABLE output
                          RESULT_VARIABLE result)
  string(REGEX MATCHALL "Compiling [a-z0-9_]+" built "${output}")
  list(LENGTH built count)
  list(FILTER built EXCLUDE REGEX "^Compiling ${pattern}$")
  if(NOT result EQUAL 0 OR NOT count EQUAL number OR built)
    message(FATAL_ERROR "${what}: ${count} built, not ${number}; unexpected: ${built}\n${output}")
  endif()
endfunction()

# Make compares whole seconds where the file system has no finer ones; a file of the future is newer in any case.
function(touch file)
  execute_process(COMMAND touch -d "+2 seconds" ${file} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} -E sleep 2.1)
endfunction()

expect_built("from nothing" "board[0-9]+_[0-9]" ${SHARING}0)
expect_built("without a change" "none" 0)
touch(${WORK_DIR}/sources/shared/part3.zek)
expect_built("after an included file" "board[0-9]+_3" ${SHARING})
touch(${WORK_DIR}/sources/shared/common.zek)
expect_built("after the file that all include" "board[0-9]+_[0-9]" ${SHARING}0)
touch(${WORK_DIR}/sources/board2_4.zek)
expect_built("after a source" "board2_4" 1)
file(REMOVE ${WORK_DIR}/board1_7.zkd)
expect_built("after an image was removed" "board1_7" 1)
expect_built("in a program" "firmware" 1 --target program)

file(STRINGS ${WORK_DIR}/firmware.txt images)
if(NOT images STREQUAL "${WORK_DIR}/rom/board.c;${WORK_DIR}/rom/board.zkd")
  message(FATAL_ERROR "the images of a target are told as ${images}")
endif()

# The program has the image, whose source was compiled once for it, above.
execute_process(COMMAND ${WORK_DIR}/program OUTPUT_FILE ${WORK_DIR}/program.zki COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${PREFIX}/bin/zek verify --pair ${WORK_DIR}/program.zki ${WORK_DIR}/rom/board.zkd
                COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${PREFIX}/bin/zek verify --pair ${WORK_DIR}/board2_4.zki ${WORK_DIR}/board2_4.zkd
                COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)

# What is included, and what the target says, is in the image.
execute_process(COMMAND ${PREFIX}/bin/zek dump ${WORK_DIR}/board2_4.zkd OUTPUT_VARIABLE dump)
foreach(text "G_PART = \"VT_VALUE,4\"" "\"LIMIT\" 2 (")
  string(FIND "${dump}" "${text}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "board2_4 lacks ${text}:\n${dump}")
  endif()
endforeach()

execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR} --target clean COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
file(GLOB left ${WORK_DIR}/*.zki ${WORK_DIR}/*.zkd ${WORK_DIR}/*.d ${WORK_DIR}/rom/*)
list(REMOVE_ITEM left ${WORK_DIR}/program.zki)
if(left)
  message(FATAL_ERROR "cleaning leaves ${left}")
endif()
