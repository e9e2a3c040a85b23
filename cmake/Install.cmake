# Installs a relocatable tree with the folders that Debian expects.
include(CMakePackageConfigHelpers)
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/zorl2_serialize)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/zorl2_serialize)
# An installed program finds the library in its own tree, wherever that is; below /usr the loader
# searches there in any case. The library itself is defined before this line and has no run path.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

install(TARGETS zorl2_serialize EXPORT zorl2_serializeTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
          NAMELINK_COMPONENT development)
install(TARGETS zorl2_host zorl2_check EXPORT zorl2_serializeTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES ${ZORL2_NATIVE_HEADERS} DESTINATION ${headers}/native COMPONENT development)
install(FILES ${ZORL2_CONVERT_HEADERS} DESTINATION ${headers}/convert COMPONENT development)
install(FILES ${ZORL2_C_API_HEADERS} DESTINATION ${headers}/c_api COMPONENT development)
install(FILES ${ZORL2_CHECK_HEADERS} DESTINATION ${headers}/check COMPONENT development)
install(FILES ${ZORL2_GENERATED_HEADERS} DESTINATION ${headers}/serialize/protobuf
  COMPONENT development)
install(FILES ${ZORL2_PROTO_FILES}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zorl2_serialize/proto COMPONENT development)
install(FILES ${ZORL2_DESCRIPTOR_SET}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zorl2_serialize COMPONENT development)

install(EXPORT zorl2_serializeTargets NAMESPACE zorl2:: DESTINATION ${package}
  COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/zorl2_serializeConfig.cmake.in
  ${PROJECT_BINARY_DIR}/zorl2_serializeConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zorl2_serializeConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zorl2_serializeConfig.cmake
  ${PROJECT_BINARY_DIR}/zorl2_serializeConfigVersion.cmake
  DESTINATION ${package} COMPONENT development)

# The pkg-config modules derive the prefix from their own place.
set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_prefix /prefix/${pkgconfig} /prefix)
string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
foreach(module IN ITEMS zorl2_serialize zorl2_host zorl2_check)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${module}.pc.in ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${pkgconfig} COMPONENT development)
endforeach()
