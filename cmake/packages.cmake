# Debian packages: cpack -G DEB in a build folder whose prefix is /usr, as that of the preset "release" is.
# Each component is a part of one of these; debian_files.cmake adds what only packages have.
set(CPACK_COMPONENT_SEARCHPATH_TOOL_GROUP tool)
set(CPACK_COMPONENT_SEARCHPATH_DOCUMENTS_GROUP tool)
set(CPACK_COMPONENT_SEARCHPATH_RUNTIME_GROUP library)
set(CPACK_COMPONENT_SEARCHPATH_PYTHON_GROUP python)
set(CPACK_COMPONENT_SEARCHPATH_DEVELOPMENT_GROUP development)
set(CPACK_COMPONENT_SEARCHPATH_EXAMPLES_GROUP development)

set(library_package libsearchpath${SEARCHPATH_ABI_NUMBER})
set(same_version "(= ${PROJECT_VERSION})")
set(purpose
    "A search path is an ordered list of folders, and a name means the file of
that name in the first folder that has one.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME searchpath)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library_package} ${same_version}")
set(CPACK_DEBIAN_TOOL_DESCRIPTION
    "${purpose}
.
This tool says which file that is, which files it hides, what is wrong
with a path, and who could change what its names mean.")

# What programs depend on that are linked with these libraries.
foreach(library IN ITEMS utilities host c)
  list(APPEND shlibs "libsearchpath-${library} ${SEARCHPATH_ABI_NUMBER} ${library_package} ${same_version}\n")
endforeach()
list(JOIN shlibs "" shlibs)
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs "${shlibs}")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs
                                               ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
    "${purpose}
.
These shared libraries look names up on folders on disk and on any other
path, and compare, edit and follow paths.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libsearchpath-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} ${same_version}, libboost1.81-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "${purpose}
.
These headers and examples are for programs in C++ and C that look names
up.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-searchpath)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${library_package} ${same_version}, python3")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION
    "${purpose}
.
This module asks for the files that names mean from Python.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The searchpath developers <searchpath@lists.example.org>")
set(CPACK_PACKAGE_VENDOR ${PROJECT_NAME})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian_files.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where the tool's own libraries are found while its dependencies are looked for.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/src/host ${PROJECT_BINARY_DIR}/src/c)

include(CPack)
