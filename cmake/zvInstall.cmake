include(CMakePackageConfigHelpers)

set(ZV_CONFIG_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/zvWidgets")
configure_package_config_file(
  "${CMAKE_CURRENT_SOURCE_DIR}/cmake/zvWidgetsConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/zvWidgetsConfig.cmake"
  INSTALL_DESTINATION "${ZV_CONFIG_DIR}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/zvWidgetsConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(EXPORT zvTargets NAMESPACE zv:: DESTINATION "${ZV_CONFIG_DIR}")
install(FILES
  "${CMAKE_BINARY_DIR}/zvWidgetsConfig.cmake"
  "${CMAKE_BINARY_DIR}/zvWidgetsConfigVersion.cmake"
  DESTINATION "${ZV_CONFIG_DIR}")
