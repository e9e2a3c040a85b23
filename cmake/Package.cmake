# The three Debian packages: cmake --preset package, build, cpack. scripts/package does all of it.
option(ZORL2_PACKAGE "Prepare the Debian packages (needs the prefix /usr)" OFF)
if(NOT ZORL2_PACKAGE)
  return()
endif()
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "packages install below /usr: configure with the preset package")
endif()
find_program(ZORL2_GENSYMBOLS dpkg-gensymbols REQUIRED)

set(runtime_package libzorl2-serialize${PROJECT_VERSION_MAJOR})
set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(release 1)

# The symbols file tells each dependent which version it needs at least. A symbol that is not
# listed in packaging/debian/symbols yet gets this version; one that is gone ends the build.
set(symbols ${PROJECT_BINARY_DIR}/debian/symbols)
add_custom_command(OUTPUT ${symbols}
  COMMAND ${debian}/make-symbols ${runtime_package} ${PROJECT_VERSION} ${debian}/symbols
          $<TARGET_FILE:zorl2_serialize> ${symbols}
  DEPENDS zorl2_serialize ${debian}/symbols ${debian}/make-symbols
  VERBATIM)
# What every package carries below share/doc.
set(changelog ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz)
add_custom_command(OUTPUT ${changelog}
  COMMAND sh -c "gzip -9nc \"$1\" >\"$2\"" - ${debian}/changelog ${changelog}
  DEPENDS ${debian}/changelog VERBATIM)
add_custom_target(zorl2_debian ALL DEPENDS ${symbols} ${changelog})

set(CPACK_COMPONENTS_ALL library development)
set(packages ${runtime_package} libzorl2-serialize-dev)
if(TARGET zorl2-inspect)
  list(APPEND CPACK_COMPONENTS_ALL tools)
  list(APPEND packages zorl2-tools)
endif()
foreach(component package IN ZIP_LISTS CPACK_COMPONENTS_ALL packages)
  install(FILES ${changelog} ${debian}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endforeach()
# Static libraries are not stripped when they are packed.
target_compile_options(zorl2_host PRIVATE -g0)
target_compile_options(zorl2_check PRIVATE -g0)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zorl2-serialize)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The libzorl2_serialize maintainers <maintainers@zorl2.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps finds the library of this tree here; the dependency on it is written by hand.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    "${symbols};${debian}/shlibs;${debian}/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
    "layer-2 interface records as Protocol Buffers messages\n\
libzorl2_serialize converts the native interface records of a layer-2\n\
manager to the proto2 messages of package zorl2.protobuf and back.\n\
\n\
This package holds the shared library.")

set(same_version "${runtime_package} (= ${PROJECT_VERSION}-${release})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzorl2-serialize-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}, libprotobuf-dev (>= 3.21)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "layer-2 interface records as Protocol Buffers messages - development\n\
libzorl2_serialize converts the native interface records of a layer-2\n\
manager to the proto2 messages of package zorl2.protobuf and back.\n\
\n\
This package holds the headers, the schema with its descriptor set, the\n\
CMake package, the pkg-config modules, the conversion checks and the\n\
fallback host functions.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME zorl2-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${same_version}")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "inspect captured messages of a layer-2 interface manager\n\
zorl2-inspect shows what is in captured messages of package\n\
zorl2.protobuf: the message, the native record and what differs.")
include(CPack)
