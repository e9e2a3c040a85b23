// Visibility and linkage. The library hides everything by default.
#pragma once

// Marks what stands in a public header, so that the library exports it.
#define ZORL2_EXPORT __attribute__((visibility("default")))

// Marks a conversion so small that the jump through the caller's linkage table shows: the caller
// takes its address from the table itself. Other compilers than GCC keep the jump.
#if defined(__GNUC__) && !defined(__clang__)
#define ZORL2_NO_LINKAGE_JUMP __attribute__((noplt))
#else
#define ZORL2_NO_LINKAGE_JUMP
#endif
