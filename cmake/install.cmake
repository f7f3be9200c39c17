# What an installed copy consists of: headers, both libraries, a CMake package, a pkg-config file and
# gdb printers.
include(CMakePackageConfigHelpers)

install(DIRECTORY i/ host/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/basbd FILES_MATCHING PATTERN "*.h")
install(TARGETS basbd basbdhost EXPORT basbd-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/basbd)
install(EXPORT basbd-targets NAMESPACE basbd:: DESTINATION ${config_dir})
configure_package_config_file(cmake/basbdConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/basbdConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/basbdConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/basbdConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/basbdConfigVersion.cmake
        DESTINATION ${config_dir})

# The installed tree may be moved: the pkg-config file finds it from its own place.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${pkgconfig_dir} /prefix)
configure_file(cmake/basbd.pc.in ${CMAKE_CURRENT_BINARY_DIR}/basbd.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/basbd.pc DESTINATION ${pkgconfig_dir})

# gdb loads the script on its own for a library of this place and name.
install(FILES gdb/basbd_printers.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}
        RENAME $<TARGET_FILE_NAME:basbd>-gdb.py)
