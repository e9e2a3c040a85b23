# The process that loads the library must define the functions in host_functions.txt, and only these.
# This links the same objects with a substitute for these functions, which fails if another is missing.
file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/host_functions.txt names)
set(stub "")
foreach(name IN LISTS names)
  string(APPEND stub "void ${name}(void);\nvoid ${name}(void) {}\n")
endforeach()
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/host_functions_stub.c CONTENT "${stub}")

add_library(zorl2_link_check MODULE ${PROJECT_BINARY_DIR}/host_functions_stub.c
            $<TARGET_OBJECTS:zorl2_own> $<TARGET_OBJECTS:zorl2_generated>)
set_target_properties(zorl2_link_check PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(zorl2_link_check PRIVATE protobuf::libprotobuf)
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_link_options(zorl2_link_check PRIVATE LINKER:-z,defs)
endif()
