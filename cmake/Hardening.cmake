# zorl2_hardening: the hardening options of every shipped object. An overrun buffer terminates the
# process.
include(CheckPIESupported)
check_pie_supported()

add_library(zorl2_hardening INTERFACE)
# An executable can be loaded at any address.
set_target_properties(zorl2_hardening PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(zorl2_hardening INTERFACE -fstack-protector-strong)
# The checked functions of the C library need an optimised build. The sanitizers replace them.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  target_compile_options(zorl2_hardening INTERFACE
    $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=2>)
endif()
target_link_options(zorl2_hardening INTERFACE
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
