// What is wrong, for programs.
#pragma once

#include <optional>
#include <string_view>

#include "tools/text/error.h"
#include "tools/text/json_writer.h"

namespace zorl2_inspect {

// Writes a member with the record, the place in the bytes or in the text, the path, what was found
// and expected, and the rule, each of which is null if it is absent. Null if there is no problem.
void WriteProblem(std::string_view name, const std::optional<Problem>& problem, JsonWriter& json);

}  // namespace zorl2_inspect
