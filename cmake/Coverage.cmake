# zorl2_covered(target): in the coverage build, counts which lines and branches of a target's own
# objects run. Only the product is counted, not its tests, not the generated classes: that is faster,
# and the counts of one header do not mix with those of differently compiled copies of it.
option(ZORL2_COVERAGE "Count the lines and branches that run" OFF)

if(ZORL2_COVERAGE)
  add_link_options(--coverage)
endif()

function(zorl2_covered target)
  if(ZORL2_COVERAGE)
    # Atomic: some tests run many threads.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
  endif()
endfunction()
