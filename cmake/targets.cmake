# How this project's own targets are compiled. Nothing here reaches a target that links them.
function(searchpath_compile target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(
    ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                      -Wnon-virtual-dtor -Woverloaded-virtual)
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON)
endfunction()

# A shared library of the project: its name in the build tree, and its public headers.
function(searchpath_library name)
  add_library(searchpath::${name} ALIAS searchpath_${name})
  searchpath_compile(searchpath_${name})
  target_compile_features(searchpath_${name} INTERFACE cxx_std_20)
  target_link_options(searchpath_${name} PRIVATE
                      LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
  set_target_properties(
    searchpath_${name}
    PROPERTIES OUTPUT_NAME searchpath-${name}
               EXPORT_NAME ${name}
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR}
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map
               VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()
