# Prefers the package that protobuf installs itself. Some distributions omit it; CMake's own module then
# finds protobuf. Both define protobuf::libprotobuf and protobuf::protoc. If a parent project has used
# either, its choice is kept.
if(NOT TARGET Threads::Threads)
  find_package(Threads REQUIRED)
  set_target_properties(Threads::Threads PROPERTIES IMPORTED_GLOBAL ON)
endif()
if(NOT TARGET protobuf::libprotobuf)
  find_package(Protobuf CONFIG QUIET)
  if(NOT Protobuf_FOUND)
    find_package(Protobuf MODULE REQUIRED)
  endif()
  # Every target that links the library links the runtime, anywhere in a parent project.
  set_target_properties(protobuf::libprotobuf PROPERTIES IMPORTED_GLOBAL ON)
endif()
