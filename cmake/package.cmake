# What an install holds beside the targets: the CMake package, the pkg-config files, the word list.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/zekcomp)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zekcompConfig.cmake.in
  ${PROJECT_BINARY_DIR}/zekcompConfig.cmake INSTALL_DESTINATION ${packageDir}
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zekcompConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zekcompConfig.cmake ${PROJECT_BINARY_DIR}/zekcompConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/zekAddImage.cmake
  DESTINATION ${packageDir} COMPONENT development)
install(EXPORT zekcompTargets NAMESPACE zekcomp:: DESTINATION ${packageDir} COMPONENT development)

# The prefix is told by the place of the file itself, so that an install can be put anywhere.
set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ZEK_PREFIX_FROM_PC /${pkgConfigDir} /)
foreach(module zekcomp zekrsparser)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${module}.pc.in ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${pkgConfigDir} COMPONENT development)
endforeach()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/share/zek DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT tools)
