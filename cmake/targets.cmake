# How this project's own targets are compiled. Nothing here reaches a target that links them.
function(searchpath_compile target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_compile_options(
    ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                      -Wnon-virtual-dtor -Woverloaded-virtual)
  if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # A source that is joined with others is no header whose types would differ between them.
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  endif()
  set_target_properties(
    ${target}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON)
endfunction()

# Stands in the names of the shared libraries. Rises when programs that were linked before would not run:
# scripts/check_abi reports such a change.
set(SEARCHPATH_ABI_NUMBER 0)

# A library of the project: its name in the build tree, its public headers, and which of its symbols are
# exported.
function(searchpath_library name exports)
  add_library(searchpath::${name} ALIAS searchpath_${name})
  searchpath_compile(searchpath_${name})
  target_link_options(searchpath_${name} PRIVATE
                      LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/${exports})
  set_target_properties(
    searchpath_${name}
    PROPERTIES OUTPUT_NAME searchpath-${name}
               EXPORT_NAME ${name}
               VERSION ${PROJECT_VERSION}
               SOVERSION ${SEARCHPATH_ABI_NUMBER}
               LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/${exports}
               VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# A part of a library that stands on a dependency which few programs need: NAME.cpp becomes a module in
# the folder "searchpath" beside the library, and NAME_from_module.cpp opens it when it is first needed.
# Without SEARCHPATH_LAZY_DEPENDENCIES the part is linked into the library instead.
function(searchpath_on_demand library name dependency)
  add_library(searchpath_${name} OBJECT ${name}.cpp)
  searchpath_compile(searchpath_${name})
  target_include_directories(
    searchpath_${name}
    PRIVATE $<TARGET_PROPERTY:searchpath_internals,INTERFACE_INCLUDE_DIRECTORIES>)
  target_link_libraries(searchpath_${name} PRIVATE Boost::headers ${dependency})
  if(NOT SEARCHPATH_LAZY_DEPENDENCIES)
    target_sources(searchpath_${library} PRIVATE $<TARGET_OBJECTS:searchpath_${name}>)
    target_link_libraries(searchpath_${library} PRIVATE ${dependency})
    return()
  endif()
  set(module searchpath_${name}_module)
  add_library(${module} MODULE)
  target_link_libraries(${module} PRIVATE searchpath_${name} ${dependency})
  target_link_options(${module} PRIVATE
                      LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/module_exports.map)
  set_target_properties(
    ${module}
    PROPERTIES PREFIX ""
               OUTPUT_NAME ${name}
               LINKER_LANGUAGE CXX
               LIBRARY_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:searchpath_${library}>/searchpath)
  target_sources(searchpath_${library} PRIVATE ${name}_from_module.cpp)
  add_dependencies(searchpath_${library} ${module})
  if(SEARCHPATH_INSTALL)
    install(TARGETS ${module} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/searchpath
                                      COMPONENT searchpath_runtime)
  endif()
endfunction()

# The schema SCHEMA.fbs in this folder of the host, as the header SCHEMA_generated.h. Nothing of the
# FlatBuffers library itself is called.
function(searchpath_flatbuffer schema)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/flatbuffers)
  add_custom_command(
    OUTPUT ${folder}/${schema}_generated.h
    COMMAND flatbuffers::flatc --cpp --scoped-enums -o ${folder}
            ${CMAKE_CURRENT_SOURCE_DIR}/${schema}.fbs
    DEPENDS ${schema}.fbs
    COMMENT "Generating ${schema}_generated.h"
    VERBATIM)
  add_custom_target(searchpath_${schema} DEPENDS ${folder}/${schema}_generated.h)
  add_dependencies(searchpath_host searchpath_${schema})
  target_include_directories(
    searchpath_host SYSTEM
    PRIVATE ${folder} $<TARGET_PROPERTY:flatbuffers::flatbuffers_shared,INTERFACE_INCLUDE_DIRECTORIES>)
endfunction()
