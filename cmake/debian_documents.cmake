# What each Debian package says of itself in share/doc: its copyright and its changes. Only packages get them.
set(debianDocuments ${CMAKE_CURRENT_BINARY_DIR}/debian)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)

# The changes in the form of Debian. A heading of CHANGELOG.md is "## VERSION (DATE)", and what follows it are items,
# perhaps of several lines.
function(zek_write_debian_changelog file)
  file(STRINGS CHANGELOG.md lines)
  list(APPEND lines "## end (1970-01-01)")
  set(changelog "")
  set(signed "")
  foreach(line IN LISTS lines)
    if(line MATCHES "^## (.*) \\((.*)\\)$")
      string(APPEND changelog "${signed}")
      set(version ${CMAKE_MATCH_1})
      execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --rfc-email --date ${CMAKE_MATCH_2}
                      OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
      set(signed "\n -- ${CPACK_PACKAGE_CONTACT}  ${date}\n\n")
      if(NOT version STREQUAL "end")
        string(APPEND changelog "${CPACK_PACKAGE_NAME} (${version}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n")
      endif()
    elseif(line MATCHES "^- (.*)$")
      string(APPEND changelog "  * ${CMAKE_MATCH_1}\n")
    elseif(line MATCHES "^  (.*)$")
      string(APPEND changelog "    ${CMAKE_MATCH_1}\n")
    endif()
  endforeach()
  file(WRITE ${file} "${changelog}")
endfunction()

find_program(DATE date)
find_program(GZIP gzip)
if(DATE AND GZIP)
  zek_write_debian_changelog(${debianDocuments}/changelog.Debian)
  execute_process(COMMAND ${GZIP} -9 --no-name --force ${debianDocuments}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
  configure_file(cmake/debian_copyright ${debianDocuments}/copyright COPYONLY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES ${debianDocuments}/copyright ${debianDocuments}/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
  endforeach()
endif()
