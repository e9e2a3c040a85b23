# zorl2_covered(target): in the coverage build, counts which lines and branches of a target's own
# objects run. Counts only the product, not its tests or the generated classes: this is faster, and the
# counts of a header do not mix with those of differently compiled copies.
option(ZORL2_COVERAGE "Count the lines and branches that run" OFF)

if(ZORL2_COVERAGE)
  add_link_options(--coverage)
endif()

function(zorl2_covered target)
  if(ZORL2_COVERAGE)
    # Counts atomically, because some tests run many threads.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
  endif()
endfunction()
