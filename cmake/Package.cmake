# The input of debhelper for the three Debian packages. scripts/package runs all steps.
option(ZORL2_PACKAGE "Prepare the Debian packages (needs the prefix /usr)" OFF)
if(NOT ZORL2_PACKAGE)
  return()
endif()
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "packages install below /usr: configure with the preset package")
endif()

set(release 1)
# Generated headers fit one minor version of the runtime.
if(NOT Protobuf_VERSION MATCHES "^([0-9]+)\\.([0-9]+)")
  message(FATAL_ERROR "unknown version of protobuf: '${Protobuf_VERSION}'")
endif()
set(protobuf_version ${CMAKE_MATCH_0})
math(EXPR next "${CMAKE_MATCH_2} + 1")
set(protobuf_next ${CMAKE_MATCH_1}.${next})

set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(stage ${PROJECT_BINARY_DIR}/stage/debian)
set(runtime libzorl2-serialize${PROJECT_VERSION_MAJOR})
foreach(file IN ITEMS changelog control)
  configure_file(${debian}/${file}.in ${stage}/${file} @ONLY)
endforeach()
configure_file(${debian}/rules.in ${stage}/rules @ONLY
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
configure_file(${debian}/symbols.in ${stage}/${runtime}.symbols @ONLY)
configure_file(${debian}/copyright ${stage}/copyright COPYONLY)
