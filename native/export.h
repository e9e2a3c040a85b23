// Visibility: the library hides everything by default.
#pragma once

// Marks what stands in a public header, so that the library exports it.
#define ZORL2_EXPORT __attribute__((visibility("default")))
