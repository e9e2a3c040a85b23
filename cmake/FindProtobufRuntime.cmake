# The package that protobuf installs itself names its targets best; a distribution that ships none
# is served by CMake's own module. Both define protobuf::libprotobuf and protobuf::protoc. A parent
# project that looked for either first has the say.
if(NOT TARGET Threads::Threads)
  find_package(Threads REQUIRED)
  set_target_properties(Threads::Threads PROPERTIES IMPORTED_GLOBAL ON)
endif()
if(NOT TARGET protobuf::libprotobuf)
  find_package(Protobuf CONFIG QUIET)
  if(NOT Protobuf_FOUND)
    find_package(Protobuf MODULE REQUIRED)
  endif()
  # Whoever links the library links the runtime, wherever in a parent project.
  set_target_properties(protobuf::libprotobuf PROPERTIES IMPORTED_GLOBAL ON)
endif()
