// The schema and its native side, for reading.
#pragma once

#include <cstdio>
#include <string>

#include "tools/colours.h"

namespace zorl2_inspect {

// Prints every message with its fields and native record, every enumeration with the numbers of
// both sides, and the speed table; or the one message or enumeration of that name, in any case of
// letters. False when there is none of it.
bool PrintTypes(const std::string& name, const Palette& paint, std::FILE* out);
bool PrintTypesAsJson(const std::string& name, std::FILE* out);

}  // namespace zorl2_inspect
