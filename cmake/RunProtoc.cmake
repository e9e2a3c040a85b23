# Runs protoc over the schema. Its remark that a file names no syntax is left out: the files are
# proto2 on purpose and say so by saying nothing. Every other word of protoc comes through.
file(MAKE_DIRECTORY ${OUT_DIR})
list(TRANSFORM NAMES APPEND .proto OUTPUT_VARIABLE files)
execute_process(
  COMMAND ${PROTOC} --proto_path=${PROTO_DIR}
          # The attribute itself, so that a consumer needs no macro.
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
