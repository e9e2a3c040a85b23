// Visibility. The library hides everything by default.
#pragma once

// Marks a declaration of a public header that the library exports.
#define ZORL2_EXPORT __attribute__((visibility("default")))
