# Runs protoc on the schema. Suppresses the warning that a file names no syntax, because proto2 is the
# default and intended. Shows everything else that protoc prints.
file(MAKE_DIRECTORY ${OUT_DIR})
list(TRANSFORM NAMES APPEND .proto OUTPUT_VARIABLE files)
execute_process(
  COMMAND ${PROTOC} --proto_path=${PROTO_DIR}
          # Writes the attribute itself, so that a consumer needs no macro.
          "--cpp_out=dllexport_decl=__attribute__((visibility(\"default\"))):${OUT_DIR}"
          --include_imports --descriptor_set_out=${DESCRIPTOR_SET} ${files}
  RESULT_VARIABLE result ERROR_VARIABLE said)
string(REGEX REPLACE "[^\n]*No syntax specified for the proto file[^\n]*\n?" "" said "${said}")
if(said)
  message("${said}")
endif()
if(NOT result EQUAL 0)
  message(FATAL_ERROR "protoc failed: ${result}")
endif()
