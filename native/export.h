/// \file
/// The visibility of public declarations. The library hides all other symbols.
#pragma once

/// Exports a declaration from the library.
#define ZORL2_EXPORT __attribute__((visibility("default")))
