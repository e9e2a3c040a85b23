# The reference of the public headers: cmake --build <tree> --target zorl2_docs. A warning fails it.
find_program(ZORL2_DOXYGEN doxygen)
mark_as_advanced(ZORL2_DOXYGEN)
if(NOT ZORL2_DOXYGEN)
  return()
endif()

set(ZORL2_DOC_DIR ${PROJECT_BINARY_DIR}/docs)
set(public_headers ${ZORL2_NATIVE_HEADERS} ${ZORL2_CONVERT_HEADERS} ${ZORL2_C_API_HEADERS}
    ${ZORL2_CHECK_HEADERS})
list(TRANSFORM public_headers PREPEND "\"${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE doc_inputs)
list(TRANSFORM doc_inputs APPEND "\"")
list(JOIN doc_inputs " " ZORL2_DOC_INPUT)
configure_file(${PROJECT_SOURCE_DIR}/cmake/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)

file(MAKE_DIRECTORY ${ZORL2_DOC_DIR})
add_custom_target(zorl2_docs
  COMMAND ${ZORL2_DOXYGEN} ${PROJECT_BINARY_DIR}/Doxyfile
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Writing the reference to ${ZORL2_DOC_DIR}/html"
  VERBATIM)
