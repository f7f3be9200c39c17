# What an installed copy consists of: headers, both libraries, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

install(DIRECTORY i/ host/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/basbd FILES_MATCHING PATTERN "*.h")
install(TARGETS basbd basbdhost EXPORT basbd-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/basbd)
install(EXPORT basbd-targets NAMESPACE basbd:: DESTINATION ${config_dir})
configure_package_config_file(cmake/basbdConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/basbdConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/basbdConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
configure_file(cmake/basbd.pc.in ${CMAKE_CURRENT_BINARY_DIR}/basbd.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/basbdConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/basbdConfigVersion.cmake
        DESTINATION ${config_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/basbd.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
