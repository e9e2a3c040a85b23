// Finds the name that the operator probably meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// Returns the name with the fewest typing errors, ignoring case. Compares a path also by its last
// part. Returns an empty text if there are no names.
std::string Nearest(std::string_view written, const std::vector<std::string>& names);

}  // namespace zorl2_inspect
