# What each Debian package says of itself in share/doc: its copyright and its changes. An installation gets them only
# where it asks for one component.
include(cmake/debian_changelog.cmake)
set(debianDocuments ${CMAKE_CURRENT_BINARY_DIR}/debian)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)

find_program(GZIP gzip)
if(GZIP)
  zek_write_debian_changelog(CHANGELOG.md ${debianDocuments}/changelog.Debian)
  execute_process(COMMAND ${GZIP} -9 --no-name --force ${debianDocuments}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
  configure_file(cmake/debian_copyright ${debianDocuments}/copyright COPYONLY)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES ${debianDocuments}/copyright ${debianDocuments}/changelog.Debian.gz
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
  endforeach()
endif()
