# The package that protobuf installs itself names its targets best; a distribution that ships none
# is served by CMake's own module. Both define protobuf::libprotobuf and protobuf::protoc.
find_package(Protobuf CONFIG QUIET)
if(NOT Protobuf_FOUND)
  find_package(Protobuf MODULE REQUIRED)
endif()
