# Run by cpack on what is about to be packed: what Debian wants of a package and an installation by hand
# does not.
function(compress)
  execute_process(COMMAND gzip -9nf ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(GLOB pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man*/*)
if(pages)
  compress(${pages})
endif()

foreach(group IN ITEMS TOOL LIBRARY PYTHON DEVELOPMENT)
  set(package ${CPACK_DEBIAN_${group}_PACKAGE_NAME})
  string(TOLOWER ${group} folder)
  set(documents ${CPACK_TEMPORARY_DIRECTORY}/${folder}/usr/share/doc/${package})
  foreach(name IN ITEMS changelog copyright)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/${name}.in ${documents}/${name} @ONLY)
  endforeach()
  compress(${documents}/changelog)
endforeach()
