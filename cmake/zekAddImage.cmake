# zek_add_image(TARGET SOURCE
#               [IMAGE FILE] [DEBUG_IMAGE FILE] [EMIT image|c]
#               [INCLUDES FOLDER...] [DEFINES NAME=VALUE...] [OPTIONS OPTION...] [EXCLUDE_FROM_ALL])
#
# Adds a target that compiles SOURCE by `zek compile`, again whenever a file that it read has changed. The images are
# TARGET.zki (TARGET.c with EMIT c) and TARGET.zkd in the current binary folder, or what IMAGE and DEBUG_IMAGE name; the
# target has their paths in its properties ZEK_IMAGE and ZEK_DEBUG_IMAGE. SOURCE and INCLUDES are from the current
# source folder. A program that has the source of C among its sources also needs add_dependencies(PROGRAM TARGET), so
# that it is compiled once. The command is ZEK_EXECUTABLE, which is looked for where it is not set.
function(zek_add_image target source)
  cmake_parse_arguments(PARSE_ARGV 2 arg "EXCLUDE_FROM_ALL" "IMAGE;DEBUG_IMAGE;EMIT" "INCLUDES;DEFINES;OPTIONS")
  if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
    message(FATAL_ERROR "zek_add_image(${target}): cannot use ${arg_UNPARSED_ARGUMENTS}${arg_KEYWORDS_MISSING_VALUES}")
  endif()
  if(arg_EMIT AND NOT arg_EMIT MATCHES "^(image|c)$")
    message(FATAL_ERROR "zek_add_image(${target}): EMIT is ${arg_EMIT}, neither image nor c")
  endif()
  get_property(folder GLOBAL PROPERTY ZEK_BINDIR)
  find_program(ZEK_EXECUTABLE zek HINTS ${folder} DOC "The command that compiles ZEK sources")
  if(NOT ZEK_EXECUTABLE)
    message(FATAL_ERROR "zek_add_image(${target}): there is no command zek; install the package zek-tools, or set "
                        "ZEK_EXECUTABLE")
  endif()

  # CMake would take the one for the beginning of a comment, the other for the end of an argument.
  cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
  foreach(path IN ITEMS "${source}" "${CMAKE_CURRENT_BINARY_DIR}" "${arg_IMAGE}" "${arg_DEBUG_IMAGE}"
                        ${arg_INCLUDES})
    if(path MATCHES "[#;]")
      message(FATAL_ERROR "zek_add_image(${target}): the path ${path} has a ${CMAKE_MATCH_0}, which no file of a build "
                          "by CMake can have in its path")
    endif()
  endforeach()

  set(extension zki)
  if(arg_EMIT STREQUAL "c")
    set(extension c)
  endif()
  foreach(output IN ITEMS "IMAGE;${target}.${extension}" "DEBUG_IMAGE;${target}.zkd")
    list(POP_FRONT output variable)
    if(NOT arg_${variable})
      set(arg_${variable} ${output})
    endif()
    cmake_path(ABSOLUTE_PATH arg_${variable} BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE)
    # Ninja would make it, Make does not.
    cmake_path(GET arg_${variable} PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
  endforeach()
  set(options ${arg_OPTIONS})
  if(arg_EMIT)
    list(APPEND options --emit ${arg_EMIT})
  endif()
  foreach(folder IN LISTS arg_INCLUDES)
    cmake_path(ABSOLUTE_PATH folder BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    list(APPEND options -I ${folder})
  endforeach()
  foreach(definition IN LISTS arg_DEFINES)
    list(APPEND options -D ${definition})
  endforeach()

  set(dependencies ${CMAKE_CURRENT_BINARY_DIR}/${target}.d)
  add_custom_command(
    OUTPUT ${arg_IMAGE} ${arg_DEBUG_IMAGE}
    COMMAND ${ZEK_EXECUTABLE} compile ${source} -o ${arg_IMAGE} -g ${arg_DEBUG_IMAGE} --depfile ${dependencies}
            ${options}
    DEPENDS ${source} ${ZEK_EXECUTABLE}
    DEPFILE ${dependencies}
    COMMENT "Compiling ${target}"
    VERBATIM)
  set(all ALL)
  if(arg_EXCLUDE_FROM_ALL)
    set(all "")
  endif()
  add_custom_target(${target} ${all} DEPENDS ${arg_IMAGE} ${arg_DEBUG_IMAGE})
  set_target_properties(${target} PROPERTIES ZEK_IMAGE ${arg_IMAGE} ZEK_DEBUG_IMAGE ${arg_DEBUG_IMAGE}
                        ADDITIONAL_CLEAN_FILES ${dependencies})
endfunction()
