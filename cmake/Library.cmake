# The library itself.
set(ZORL2_NATIVE_HEADERS
    native/export.h native/info_client_config.h native/intf_entry.h native/intf_entry_builder.h
    native/intf_state_signals.h native/l2_enums.h native/lag_member_operation.h
    native/pvex_fault.h native/zorid.h)
# The headers in convert/ that are missing here are the library's own.
set(ZORL2_CONVERT_HEADERS
    convert/converter.h convert/enum_serialization.h convert/info_client_config_converter.h
    convert/intf_entry_convert_helper_protobuf.h convert/intf_entry_convert_helper_zor.h
    convert/intf_entry_converter.h convert/intf_state_converter.h convert/lag_member_converter.h
    convert/zorid_converter.h)
set(ZORL2_C_API_HEADERS c_api/intf_entry.h)
set(ZORL2_CHECK_HEADERS check/check.h)
set(ZORL2_SOURCES
    native/intf_entry.cpp native/intf_entry_builder.cpp
    convert/enum_serialization.cpp convert/info_client_config_converter.cpp
    convert/intf_entry_convert_helper_protobuf.cpp convert/intf_entry_convert_helper_zor.cpp
    convert/intf_entry_converter.cpp
    convert/intf_state_converter.cpp convert/lag_member_converter.cpp convert/zorid_converter.cpp
    c_api/intf_entry.cpp)

# How every object of the library is compiled.
add_library(zorl2_object_options INTERFACE)
target_include_directories(zorl2_object_options INTERFACE ${PROJECT_SOURCE_DIR})
target_include_directories(zorl2_object_options SYSTEM INTERFACE ${ZORL2_GENERATED_DIR})
target_link_libraries(zorl2_object_options INTERFACE protobuf::libprotobuf Boost::headers)
target_compile_options(zorl2_object_options INTERFACE
  # Assertions stay on in every build type: without them the generated setters stop checking and
  # invalid UTF-8 is no longer reported.
  -UNDEBUG
  # Paths in assertions and fault reports are relative to the root of the sources.
  -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/= -fmacro-prefix-map=${PROJECT_BINARY_DIR}/=
  -fvisibility=hidden -fvisibility-inlines-hidden -fno-semantic-interposition -fno-plt
  # One end for the loop that searches a map instead of two: fewer jumps per level.
  $<$<CXX_COMPILER_ID:GNU>:-fno-split-paths>
  -ffunction-sections -fdata-sections
  # Overrun buffers end the process instead of going on. No immediate binding at the link below:
  # the host's functions may be resolved as late as their first call.
  -fstack-protector-strong
  $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)

add_library(zorl2_generated OBJECT ${ZORL2_GENERATED_SOURCES})
target_link_libraries(zorl2_generated PRIVATE zorl2_object_options)
target_compile_options(zorl2_generated PRIVATE -w)
# Generated sources are made to stand alone: as one they do not compile.
set_target_properties(zorl2_generated PROPERTIES POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)

add_library(zorl2_own OBJECT ${ZORL2_SOURCES})
target_link_libraries(zorl2_own PRIVATE zorl2_object_options)
target_sources(zorl2_own PRIVATE ${ZORL2_GENERATED_HEADERS})
target_compile_definitions(zorl2_own PRIVATE ZORL2_NO_SPEED_TABLE)
set_target_properties(zorl2_own PROPERTIES POSITION_INDEPENDENT_CODE ON)
zorl2_warnings(zorl2_own)
zorl2_covered(zorl2_own)
if(ZORL2_COVERAGE)
  # One copy of every template, or the copies that the linker drops count as never run.
  set_target_properties(zorl2_own PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
elseif(CMAKE_BUILD_TYPE STREQUAL Release)
  # Tested and analysed as it is installed, source by source, however the rest is built.
  set_target_properties(zorl2_own PROPERTIES UNITY_BUILD OFF)
endif()
# The C functions promise an invalid memory access when memory runs out; the optimiser must not
# reason from it that memory never does.
set_source_files_properties(c_api/intf_entry.cpp TARGET_DIRECTORY zorl2_own PROPERTIES
  COMPILE_OPTIONS "-fno-delete-null-pointer-checks")
if(CMAKE_BUILD_TYPE STREQUAL Release AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # The compiler sees short functions together with their callers: the record's getters and the
  # builder's steps, the check of each protocol that is set, and the initialisation test of messages
  # without a required field, which is always true. Generated classes beyond these are left out:
  # CopyFrom of an entry would take half as long again.
  set_source_files_properties(
    native/intf_entry.cpp native/intf_entry_builder.cpp convert/intf_entry_converter.cpp
    convert/info_client_config_converter.cpp convert/lag_member_converter.cpp
    convert/zorid_converter.cpp
    TARGET_DIRECTORY zorl2_own PROPERTIES COMPILE_OPTIONS -flto)
  set_source_files_properties(
    ${ZORL2_GENERATED_DIR}/information_client.pb.cc ${ZORL2_GENERATED_DIR}/lag.pb.cc
    ${ZORL2_GENERATED_DIR}/zorid.pb.cc
    TARGET_DIRECTORY zorl2_generated PROPERTIES COMPILE_OPTIONS -flto)
endif()

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
# The prefix is written out: of a system directory CMake exports a relative path as it stands.
set(installed_generated_dir ${CMAKE_INSTALL_INCLUDEDIR}/zorl2_serialize/serialize/protobuf)
target_include_directories(zorl2_serialize SYSTEM PUBLIC
  $<BUILD_INTERFACE:${ZORL2_GENERATED_DIR}>
  $<INSTALL_INTERFACE:$<INSTALL_PREFIX>/${installed_generated_dir}>)
target_link_libraries(zorl2_serialize PUBLIC protobuf::libprotobuf)
add_dependencies(zorl2_serialize zorl2_own)
target_link_options(zorl2_serialize PRIVATE
  # The runtime cannot unregister descriptors: once loaded, the library stays.
  LINKER:-z,nodelete
  LINKER:-Bsymbolic-functions LINKER:--gc-sections LINKER:-z,relro LINKER:--as-needed
  LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
