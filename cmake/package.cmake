# The components as Debian packages: `cpack -G DEB` in a build directory.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The maintainers of basbd")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES OFF) # the gdb printers find the variable names by their symbol
set(CPACK_COMPONENTS_ALL library development)
if(TARGET cellfn)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/standalone ${PROJECT_BINARY_DIR}/cells)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libbasbd${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbasbd-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME cellfn)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION electronics)

include(CPack)
cpack_add_component(library DESCRIPTION "The shared libraries and their gdb printers")
cpack_add_component(development DESCRIPTION "Headers, and what lets a build find the libraries"
  DEPENDS library)
cpack_add_component(tool DESCRIPTION "cellfn shows and matches the cells of a library" DEPENDS library)
