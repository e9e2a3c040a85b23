/// \file
/// The visibility of public declarations. The library hides everything else.
#pragma once

/// Exports a declaration from the library.
#define ZORL2_EXPORT __attribute__((visibility("default")))
