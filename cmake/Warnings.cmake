# zorl2_warnings(target): enables the warnings for our own code.
function(zorl2_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wconversion -Wshadow
    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual -Wold-style-cast>
    $<$<BOOL:${ZORL2_WERROR}>:-Werror>)
endfunction()
