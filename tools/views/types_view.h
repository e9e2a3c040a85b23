// The schema and its native side.
#pragma once

#include <string>

#include "tools/text/colours.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// Prints every message with its fields and native record, every enumeration with the numbers of
// both sides, and the speed table; or only the message or enumeration with the name, in upper or
// lower case. Returns false if no message or enumeration has the name.
bool PrintTypes(const std::string& name, const Palette& paint, Output& out);
bool PrintTypesAsJson(const std::string& name, Output& out);

}  // namespace zorl2_inspect
