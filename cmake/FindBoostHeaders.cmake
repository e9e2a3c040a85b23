# Finds Boost::headers, also for a parent project that does not look for Boost itself.
if(NOT TARGET Boost::headers)
  find_package(Boost 1.74 REQUIRED)
  set_target_properties(Boost::headers PROPERTIES IMPORTED_GLOBAL ON)
endif()
