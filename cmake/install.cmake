include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/searchpath)

install(
  TARGETS searchpath_utilities searchpath_host searchpath_c
  EXPORT searchpath-targets
  RUNTIME COMPONENT searchpath_runtime
  ARCHIVE COMPONENT searchpath_development
  LIBRARY COMPONENT searchpath_runtime NAMELINK_COMPONENT searchpath_development
  FILE_SET HEADERS COMPONENT searchpath_development
  FILE_SET generated COMPONENT searchpath_development)
if(SEARCHPATH_BUILD_TOOL)
  install(TARGETS searchpath_tool RUNTIME COMPONENT searchpath_tool)
endif()

if(BUILD_SHARED_LIBS)
  install(
    DIRECTORY bindings/python/searchpath
    DESTINATION lib/python3/dist-packages
    COMPONENT searchpath_python
    PATTERN __pycache__ EXCLUDE)
endif()

# As in the sources, so that links between pages hold.
install(
  FILES README.md CHANGELOG.md CONTRIBUTING.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT searchpath_documents)
install(
  DIRECTORY docs
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT searchpath_documents
  PATTERN reference EXCLUDE
  PATTERN abi EXCLUDE)
install(
  DIRECTORY examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT searchpath_examples
  REGEX "/examples/(CMakeLists\\.txt|\\.clang-tidy)$" EXCLUDE)

install(
  EXPORT searchpath-targets
  NAMESPACE searchpath::
  DESTINATION ${package_folder}
  COMPONENT searchpath_development)
configure_package_config_file(cmake/config.cmake.in searchpath-config.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(searchpath-config-version.cmake COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/searchpath-config.cmake
        ${PROJECT_BINARY_DIR}/searchpath-config-version.cmake
  DESTINATION ${package_folder}
  COMPONENT searchpath_development)

# Relative, so that it holds wherever the files are installed or moved.
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
if(NOT BUILD_SHARED_LIBS)
  set(requires_private "Requires.private: icu-uc libxxhash liburiparser spdlog tbb")
endif()
configure_file(cmake/searchpath.pc.in searchpath.pc @ONLY)
configure_file(cmake/searchpath-c.pc.in searchpath-c.pc @ONLY)
install(
  FILES ${PROJECT_BINARY_DIR}/searchpath.pc ${PROJECT_BINARY_DIR}/searchpath-c.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT searchpath_development)
