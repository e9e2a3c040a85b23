# Everything that is shipped: the library, zorl2::host, zorl2::check and every target of tools/.
include(${CMAKE_CURRENT_LIST_DIR}/TargetsBelow.cmake)
set(shipped zorl2_host zorl2_check)
if(ZORL2_BUILD_TOOLS)
  zorl2_targets_below(tool_targets ${PROJECT_SOURCE_DIR}/tools)
  list(APPEND shipped ${tool_targets})
endif()

# The library's own objects are hardened in Library.cmake.
foreach(target IN LISTS shipped)
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "UTILITY")
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zorl2_hardening>)
  endif()
endforeach()

# Builds everything that `cmake --install` installs.
add_custom_target(zorl2_shipped DEPENDS zorl2_serialize ${shipped})
