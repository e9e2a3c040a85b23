// The one export macro: the library hides everything by default, and what stands in a public
// header carries this mark.
#pragma once

#define ZORL2_EXPORT __attribute__((visibility("default")))
