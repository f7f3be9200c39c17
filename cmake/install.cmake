# What an installed copy consists of, in three components.
include(CMakePackageConfigHelpers)

# ---- library: the shared libraries and the gdb printers
set(libraries basbd basbdhost)
if(TARGET basbdcells)
  list(APPEND libraries basbdcells)
endif()
install(TARGETS ${libraries} EXPORT basbd-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
# gdb loads the script on its own for a library of this place and name.
install(FILES gdb/basbd_printers.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}
        RENAME $<TARGET_FILE_NAME:basbd>-gdb.py COMPONENT library)

# ---- tool
if(TARGET cellfn)
  file(RELATIVE_PATH libraries_from_tool /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
  set_target_properties(cellfn PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_from_tool}")
  install(TARGETS cellfn DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  install(FILES README.md CHANGELOG.md CONTRIBUTING.md TYPE DOC COMPONENT tool)
  install(DIRECTORY docs examples/libraries TYPE DOC COMPONENT tool
          FILES_MATCHING PATTERN "*.md" PATTERN "*.genlib" PATTERN "*.lib")
endif()

# ---- development: headers, a CMake package and a pkg-config file
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
install(DIRECTORY i/ host/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/basbd FILES_MATCHING PATTERN "*.h")

if(TARGET basbdcells)
  install(DIRECTORY cells/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/basbd)
endif()

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
foreach(package basbd basbdcells)
  if(TARGET ${package})
    configure_file(cmake/${package}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${package}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${package}.pc DESTINATION ${pkgconfig_dir})
  endif()
endforeach()
