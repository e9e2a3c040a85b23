# The classes and the descriptor set of the nine schema files.
set(ZORL2_PROTO_DIR ${PROJECT_SOURCE_DIR}/serialize/protobuf)
set(ZORL2_GENERATED_DIR ${PROJECT_BINARY_DIR}/serialize/protobuf)
set(ZORL2_PROTO_NAMES zorid information_client intf_state interface_entry lag l2_sub_if virtual_if
    sysinfo audit_info)

set(ZORL2_PROTO_FILES)
set(ZORL2_GENERATED_SOURCES)
set(ZORL2_GENERATED_HEADERS)
foreach(name IN LISTS ZORL2_PROTO_NAMES)
  list(APPEND ZORL2_PROTO_FILES ${ZORL2_PROTO_DIR}/${name}.proto)
  list(APPEND ZORL2_GENERATED_SOURCES ${ZORL2_GENERATED_DIR}/${name}.pb.cc)
  list(APPEND ZORL2_GENERATED_HEADERS ${ZORL2_GENERATED_DIR}/${name}.pb.h)
endforeach()
set(ZORL2_DESCRIPTOR_SET ${ZORL2_GENERATED_DIR}/zorl2.desc)

add_custom_command(
  OUTPUT ${ZORL2_GENERATED_SOURCES} ${ZORL2_GENERATED_HEADERS} ${ZORL2_DESCRIPTOR_SET}
  COMMAND ${CMAKE_COMMAND} -DPROTOC=$<TARGET_FILE:protobuf::protoc> -DPROTO_DIR=${ZORL2_PROTO_DIR}
          -DOUT_DIR=${ZORL2_GENERATED_DIR} -DDESCRIPTOR_SET=${ZORL2_DESCRIPTOR_SET}
          "-DNAMES=${ZORL2_PROTO_NAMES}" -P ${PROJECT_SOURCE_DIR}/cmake/RunProtoc.cmake
  DEPENDS ${ZORL2_PROTO_FILES} ${PROJECT_SOURCE_DIR}/cmake/RunProtoc.cmake
  COMMENT "Generating the message classes"
  VERBATIM)
# One target generates them, so that parallel builds with make run protoc once.
add_custom_target(zorl2_schema DEPENDS
  ${ZORL2_GENERATED_SOURCES} ${ZORL2_GENERATED_HEADERS} ${ZORL2_DESCRIPTOR_SET})
