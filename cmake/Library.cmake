# The library itself.
# The folders determine its contents: every header in native/, convert/ and c_api/ is public and
# installed; those in convert/internal/ are not.
foreach(folder IN ITEMS native convert c_api)
  string(TOUPPER ${folder} upper)
  file(GLOB ZORL2_${upper}_HEADERS CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
       ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
       ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  list(APPEND ZORL2_SOURCES ${sources})
endforeach()

file(GLOB ZORL2_CHECK_HEADERS CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
     ${PROJECT_SOURCE_DIR}/check/*.h)

# The options of every object of the library.
add_library(zorl2_object_options INTERFACE)
target_include_directories(zorl2_object_options INTERFACE ${PROJECT_SOURCE_DIR})
target_include_directories(zorl2_object_options SYSTEM INTERFACE ${ZORL2_GENERATED_DIR})
target_link_libraries(zorl2_object_options INTERFACE
  zorl2_hardening protobuf::libprotobuf Boost::headers)
target_compile_features(zorl2_object_options INTERFACE cxx_std_17)
target_compile_options(zorl2_object_options INTERFACE
  # Assertions stay on in every build type: without them the generated setters stop checking and
  # invalid UTF-8 is no longer reported.
  -UNDEBUG
  # Paths in assertions and fault reports are relative to the root of the sources.
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=${PROJECT_BINARY_DIR}/=
  -fvisibility=hidden -fvisibility-inlines-hidden -fno-semantic-interposition -fno-plt
  -ffunction-sections -fdata-sections)

add_library(zorl2_generated OBJECT ${ZORL2_GENERATED_SOURCES})
target_link_libraries(zorl2_generated PRIVATE zorl2_object_options)
target_compile_options(zorl2_generated PRIVATE -w)
add_dependencies(zorl2_generated zorl2_schema)
# The generated sources do not compile as one source.
set_target_properties(zorl2_generated PROPERTIES POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)

add_library(zorl2_own OBJECT ${ZORL2_SOURCES})
target_link_libraries(zorl2_own PRIVATE zorl2_object_options)
add_dependencies(zorl2_own zorl2_schema)
# Compiles one translation unit in every build type, so that functions are inlined across files.
set_target_properties(zorl2_own PROPERTIES
  POSITION_INDEPENDENT_CODE ON UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
zorl2_warnings(zorl2_own)
zorl2_covered(zorl2_own)
# The C functions promise an invalid memory access after an allocation failure. The optimiser must
# not conclude from that access that allocations never fail.
set_source_files_properties(c_api/intf_entry.cpp TARGET_DIRECTORY zorl2_own PROPERTIES
  COMPILE_OPTIONS "-fno-delete-null-pointer-checks")

add_library(zorl2_serialize SHARED $<TARGET_OBJECTS:zorl2_own> $<TARGET_OBJECTS:zorl2_generated>)
add_library(zorl2::serialize ALIAS zorl2_serialize)
set_target_properties(zorl2_serialize PROPERTIES
  LINKER_LANGUAGE CXX
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
  EXPORT_NAME serialize
  LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
target_compile_features(zorl2_serialize PUBLIC cxx_std_17)
target_include_directories(zorl2_serialize PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zorl2_serialize>)
# Writes the prefix explicitly, because CMake does not add it to a relative system directory.
set(installed_generated_dir ${CMAKE_INSTALL_INCLUDEDIR}/zorl2_serialize/serialize/protobuf)
target_include_directories(zorl2_serialize SYSTEM PUBLIC
  $<BUILD_INTERFACE:${ZORL2_GENERATED_DIR}>
  $<INSTALL_INTERFACE:$<INSTALL_PREFIX>/${installed_generated_dir}>)
target_link_libraries(zorl2_serialize
  PUBLIC protobuf::libprotobuf PRIVATE $<BUILD_INTERFACE:zorl2_hardening>)
add_dependencies(zorl2_serialize zorl2_own)
# Binds all symbols when the library is loaded, so the host functions must be defined before.
target_link_options(zorl2_serialize PRIVATE
  # The runtime cannot unregister descriptors, so a loaded library is never unloaded.
  LINKER:-z,nodelete
  LINKER:-Bsymbolic-functions LINKER:--gc-sections LINKER:--as-needed
  LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
